#pragma once

#include <functional>
#include <string>

#include "base/published.h"

namespace brimlo {

/// What the updates window says.
struct UpdatesContent {
  std::string message = {};
  bool busy = false;        ///< an answer is awaited
  std::string notes = {};   ///< what is new: HTML or plain text, from outside; may be empty
  bool offersSkip = false;  ///< there is a version to skip
  bool offersPage = false;  ///< there is a page to open
};

/// What the updates window shows. The model keeps it, the view observes it and reports through the
/// callbacks. Main thread.
struct UpdatesViewState {
  Published<UpdatesContent> content{UpdatesContent()};

  std::function<void()> onClose;
  std::function<void()> onSkip;
  std::function<void()> onOpenPage;
};

}  // namespace brimlo
