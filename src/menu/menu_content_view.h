#pragma once

#include <QColor>
#include <QWidget>
#include <memory>
#include <vector>

#include "base/published.h"
#include "menu/menu_content_model.h"
#include "menu/menu_rows.h"
#include "platform/appearance.h"
#include "ui/alert.h"
#include "ui/button.h"
#include "ui/label.h"
#include "ui/row_list.h"
#include "ui/switch.h"
#include "ui/window_colors.h"

namespace brimlo {

/// The menu window as it is seen: a header, the history, the templates, the footer. It shows what
/// the model says and reports what is pressed. Light or dark as the desktop is. Main thread.
class MenuContentView : public QWidget {
 public:
  /// Both outlive the view.
  MenuContentView(MenuContentModel& model, const Published<Appearance>& appearance);
  ~MenuContentView() override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct Section;
  struct FooterWidget {
    QWidget* widget = nullptr;
    ui::Switch* toggle = nullptr;
    ui::Button* button = nullptr;
  };

  void build();
  QWidget* header();
  std::unique_ptr<Section> makeSection(int maximumHeight);
  QWidget* footer();
  QWidget* footerWidget(const FooterItem& item);
  ui::Button* mossButton(const QString& leadingSymbol, const QString& trailingSymbol);
  void showContent(const MenuContent& content);
  static void showPage(Section& section, const MenuPage& page);
  void showAlert(const std::optional<MenuAlert>& alert);

  MenuContentModel& model_;
  const QColor moss_ = ui::moss();
  ui::WindowColors colors_;
  QWidget* content_ = nullptr;
  ui::Label* count_ = nullptr;
  ui::Label* empty_ = nullptr;
  QWidget* emptyRow_ = nullptr;
  std::unique_ptr<Section> history_;
  std::unique_ptr<Section> templates_;
  QWidget* templatesDivider_ = nullptr;
  std::vector<FooterWidget> footer_;
  ui::Label* status_ = nullptr;
  ui::Alert* alert_ = nullptr;
  Subscription contentChanges_;
  Subscription appearanceChanges_;
};

}  // namespace brimlo
