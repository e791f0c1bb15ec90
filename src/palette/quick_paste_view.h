#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "base/published.h"
#include "palette/quick_paste_rows.h"
#include "palette/quick_paste_view_state.h"
#include "platform/localized_strings.h"
#include "platform/pasteboard.h"
#include "ui/capsule_tab.h"
#include "ui/card.h"
#include "ui/label.h"
#include "ui/row_list.h"
#include "ui/shape_box.h"
#include "ui/text_field.h"

namespace brimlo {

/// The palette as it is seen: a dark card with the filter, the two sections' tabs, the rows and the
/// key hints. It shows what the state says, writes the query, and reports clicks. Main thread.
class QuickPasteView : public ui::Card {
 public:
  /// `state` and `pasteboard` outlive the view; the filter field pastes from the latter.
  QuickPasteView(QuickPasteViewState& state, const LocalizedStrings& strings,
                 const Pasteboard& pasteboard);

 private:
  QWidget* titleRow(const LocalizedStrings& strings);
  QWidget* filterBox();
  QWidget* tabRow();
  QWidget* listArea();
  QWidget* hintBar(const LocalizedStrings& strings);
  QWidget* hint(const char* keys, const std::string& label);
  void observe();
  void showRows();
  void showSelection();
  void showCounter();

  QuickPasteViewState& state_;
  const QuickPasteColors colors_;
  QString noMatchText_;
  QString emptyText_;
  QuickPasteRows rows_;
  ui::TextField* searchField_;
  ui::ShapeBox* filterBox_;
  ui::CapsuleTab* clipsTab_;
  ui::CapsuleTab* templatesTab_;
  ui::RowList* list_;
  ui::Label* emptyLabel_;
  ui::Label* counter_;
  std::vector<Subscription> subscriptions_;
};

}  // namespace brimlo
