#pragma once

#include <QWidget>
#include <string>

#include "base/published.h"
#include "platform/appearance.h"
#include "platform/localized_strings.h"
#include "updates/updates_view_state.h"

namespace brimlo {

/// The updates window as it is seen: what there is to say, what is new, and what can be done about
/// it. Light or dark as the desktop is. Main thread.
class UpdatesView : public QWidget {
 public:
  /// All of it outlives the view.
  UpdatesView(UpdatesViewState& state, const Published<Appearance>& appearance,
              const LocalizedStrings& strings);

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
  const LocalizedStrings& strings_;
  QWidget* content_ = nullptr;
  QWidget* focused_ = nullptr;  // the button that Return presses
  Subscription contentChanges_;
  Subscription appearanceChanges_;
};

}  // namespace brimlo
