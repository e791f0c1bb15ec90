#include "ui/text_field.h"

#include <QFocusEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleHints>
#include <QTimerEvent>

namespace brimlo::ui {
namespace {

/// The toolkit draws the caret in the colour of the text, so it is told to draw none.
class CaretlessStyle : public QProxyStyle {
 public:
  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override {
    return metric == PM_TextCursorWidth ? 0 : QProxyStyle::pixelMetric(metric, option, widget);
  }
};

}  // namespace

TextField::TextField(const TextStyle& style, const Colors& colors, const Pasteboard& pasteboard)
    : tint_(colors.tint), pasteboard_(pasteboard) {
  auto* caretless = new CaretlessStyle;
  caretless->setParent(this);
  setStyle(caretless);
  setFrame(false);
  setFont(ui::font(style));
  setPadding(0, 0);
  // Its menu would paste from the toolkit's clipboard.
  setContextMenuPolicy(Qt::NoContextMenu);
  QPalette palette;
  QColor selection = colors.tint;
  selection.setAlphaF(0.35F);
  palette.setColor(QPalette::Base, Qt::transparent);
  palette.setColor(QPalette::Text, colors.text);
  palette.setColor(QPalette::PlaceholderText, colors.placeholder);
  palette.setColor(QPalette::Highlight, selection);
  palette.setColor(QPalette::HighlightedText, colors.text);
  setPalette(palette);
  connect(this, &QLineEdit::cursorPositionChanged, this, [this] { showCaret(); });
}

void TextField::setPadding(int horizontal, int vertical) {
  // The toolkit keeps two pixels on both sides for itself.
  setTextMargins(horizontal - 2, vertical, horizontal - 2, vertical);
  verticalPadding_ = vertical;
}

QSize TextField::sizeHint() const {
  return {QLineEdit::sizeHint().width(), fontMetrics().height() + 1 + 2 * verticalPadding_};
}

void TextField::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  if (!hasFocus() || !caretShown_ || hasSelectedText()) return;
  // The toolkit's rectangle has room around the place of the caret.
  constexpr int kRoom = 5;
  const QRectF place = cursorRect();
  QPainter painter(this);
  painter.fillRect(QRectF(place.left() + kRoom - 1, place.top(), 1.5, place.height()), tint_);
}

void TextField::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Paste)) {
    insert(QString::fromStdString(pasteboard_.string().value_or(std::string())));
    return;
  }
  QLineEdit::keyPressEvent(event);
}

void TextField::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::MiddleButton) QLineEdit::mousePressEvent(event);
}

void TextField::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::MiddleButton) QLineEdit::mouseReleaseEvent(event);
}

void TextField::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  showCaret();
}

void TextField::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  blink_.stop();
  update();
}

void TextField::timerEvent(QTimerEvent* event) {
  if (event->timerId() != blink_.timerId()) return QLineEdit::timerEvent(event);
  caretShown_ = !caretShown_;
  update();
}

void TextField::showCaret() {
  caretShown_ = true;
  const int flash = QGuiApplication::styleHints()->cursorFlashTime();
  if (hasFocus() && flash > 0) blink_.start(flash / 2, this);
  update();
}

}  // namespace brimlo::ui
