#pragma once

#include <QWidget>
#include <functional>
#include <string>

#include "base/published.h"
#include "platform/appearance.h"
#include "updates/updates_view_state.h"

namespace brimlo {

/// The updates window as it is seen: what there is to say, what is new, and what can be done about
/// it. Light or dark as the desktop is. Main thread.
class UpdatesView : public QWidget {
 public:
  using Text = std::function<std::string(const char* key)>;

  /// `state` and `appearance` outlive the view.
  UpdatesView(UpdatesViewState& state, const Published<Appearance>& appearance, Text text);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void build();
  QWidget* notes(const std::string& html);
  QWidget* buttons(const UpdatesContent& shown);
  QString text(const char* key) const;

  UpdatesViewState& state_;
  const Published<Appearance>& appearance_;
  Text text_;
  QWidget* content_ = nullptr;
  QWidget* focused_ = nullptr;  // the button that Return presses
  Subscription contentChanges_;
  Subscription appearanceChanges_;
};

}  // namespace brimlo
