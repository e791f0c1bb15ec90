#include "onboarding/onboarding_view.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/color.h"
#include "ui/label.h"
#include "ui/paragraph.h"
#include "ui/shapes.h"
#include "ui/stack.h"
#include "ui/symbol.h"
#include "ui/window_colors.h"

namespace brimlo {
namespace {

constexpr int kWidth = 480;
constexpr int kHeight = 560;
constexpr int kSide = 40;  // left and right of a step's content
constexpr int kContentWidth = kWidth - 2 * kSide;
constexpr int kCardPadding = 14;  // of the practice's cards
constexpr int kCardWidth = kContentWidth - 2 * kCardPadding;
constexpr int kTransition = 150;  // milliseconds

const QColor kMoss = ui::moss();
const QColor kBackground = ui::srgb(243, 245, 242);
const QColor kInk = ui::windowColors(Appearance::kLight).text;
const QColor kSubInk = ui::windowColors(Appearance::kLight).secondary;

QColor faded(QColor color, double opacity) {
  color.setAlphaF(static_cast<float>(opacity));
  return color;
}

constexpr double kDot = 8;
constexpr double kDotSpacing = 8;

/// A dot for each step, the current one dark.
class Dots : public QWidget {
 public:
  explicit Dots(int count) : count_(count) {
    setFixedSize(static_cast<int>(count * (kDot + kDotSpacing) - kDotSpacing),
                 static_cast<int>(kDot));
  }

  void setCurrent(int current) {
    current_ = current;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int dot = 0; dot < count_; ++dot) {
      painter.setBrush(dot == current_ ? kInk : faded(kInk, 0.22));
      painter.drawEllipse(QRectF(dot * (kDot + kDotSpacing), 0, kDot, kDot));
    }
  }

 private:
  int count_;
  int current_ = 0;
};

/// A symbol on a tinted tile.
class IconTile : public QWidget {
 public:
  explicit IconTile(const char* symbol) : symbol_(symbol) { setFixedSize(96, 96); }

 protected:
  void paintEvent(QPaintEvent*) override {
    constexpr ui::TextStyle kStyle{.size = 42, .weight = QFont::Medium};
    constexpr double kRadius = 22;
    QPainter painter(this);
    ui::fillRounded(painter, rect(), kRadius, faded(kMoss, 0.12));
    QRectF place({}, ui::symbolSize(symbol_, kStyle));
    place.moveCenter(QRectF(rect()).center());
    ui::paintSymbol(painter, symbol_, place, kMoss);
  }

 private:
  QString symbol_;
};

ui::ShapeBox* card() {
  constexpr double kRadius = 12;
  return new ui::ShapeBox(kRadius, Qt::white);
}

void highlight(ui::ShapeBox* card, bool on) {
  card->setBorder(faded(kMoss, on ? 0.5 : 0.15));
}

/// The content of one step, in the middle of the room it is given.
QWidget* page(int spacing, std::initializer_list<ui::StackItem> items) {
  auto* content = ui::column({.spacing = spacing, .padding = ui::padding(kSide, 0)}, items);
  return ui::column({}, {ui::Spacer(), content, ui::Spacer()});
}

ui::Button* filledButton(const QString& label, const ui::TextStyle& style, const QMargins& padding,
                         double radius) {
  return new ui::Button(label, {.style = style.semibold(),
                                .text = Qt::white,
                                .fill = kMoss,
                                .horizontalPadding = padding.left(),
                                .verticalPadding = padding.top(),
                                .radius = radius});
}

}  // namespace

OnboardingView::OnboardingView(OnboardingViewState& state, const LocalizedStrings& strings,
                               const Pasteboard& pasteboard)
    : state_(state), strings_(strings), pasteboard_(pasteboard) {
  setFixedSize(kWidth, kHeight);
  auto* content = new QWidget;
  pages_ = new QStackedLayout(content);
  for (QWidget* step :
       {page(18,
             {hero("square.stack.3d.up.fill", "onboarding.step1.title", "onboarding.step1.body")}),
        page(22, {hero("command", "onboarding.step2.title", "onboarding.step2.body"),
                  accessibilityCard()}),
        practicePage(),
        page(18, {hero("iphone", "onboarding.step3.title", "onboarding.step3.body")})}) {
    pages_->addWidget(step);
  }
  ui::layOutColumn(*this, {}, {content, dots(), navigationBar()});
  static_cast<QVBoxLayout*>(layout())->setStretch(0, 1);
  fade_ = new ui::CrossFade(this, kTransition);
  observe();
}

QString OnboardingView::text(const char* key) const {
  return QString::fromStdString(strings_.text(key));
}

QWidget* OnboardingView::hero(const char* symbol, const char* title, const char* body) {
  return ui::column(
      {.spacing = 18},
      {ui::centered(new IconTile(symbol)),
       new ui::Paragraph(text(title), ui::kTitle2.bold(), kInk, {.width = kContentWidth}),
       new ui::Paragraph(text(body), ui::kCallout, kSubInk,
                         {.width = kContentWidth, .lineSpacing = 3})});
}

QWidget* OnboardingView::accessibilityCard() {
  constexpr int kPadding = 16;
  granted_ = ui::row(
      {.spacing = 8},
      {ui::Spacer(), new ui::Symbol("checkmark.seal.fill", ui::kCallout, kMoss),
       new ui::Label(text("onboarding.ax.granted"), ui::kCallout.semibold(), kInk), ui::Spacer()});
  auto* button = filledButton(text("onboarding.ax.button"), ui::kCallout, ui::padding(18, 9), 9);
  connect(button, &QAbstractButton::clicked, this, [this] {
    if (state_.onRequestAccessibility) state_.onRequestAccessibility();
  });
  auto* note = new ui::Paragraph(text("onboarding.ax.note"), ui::kCaption, kSubInk,
                                 {.width = kContentWidth - 2 * kPadding, .lineSpacing = 2});
  asking_ = ui::column({.spacing = 10}, {ui::centered(button), note});
  accessibilityCard_ = card();
  ui::layOutColumn(*accessibilityCard_, {.padding = ui::padding(kPadding, kPadding)},
                   {asking_, granted_});
  return accessibilityCard_;
}

QWidget* OnboardingView::practicePage() {
  return page(14, {new ui::Paragraph(text("onboarding.practice.title"), ui::kTitle2.bold(), kInk,
                                     {.width = kContentWidth}),
                   new ui::Paragraph(text("onboarding.practice.body"), ui::kCallout, kSubInk,
                                     {.width = kContentWidth}),
                   copyCard(), pasteCard()});
}

QWidget* OnboardingView::copyCard() {
  auto* sample = new QLabel(text("onboarding.practice.sample"));
  sample->setTextFormat(Qt::PlainText);
  sample->setTextInteractionFlags(Qt::TextSelectableByMouse);
  sample->setWordWrap(true);
  sample->setFont(ui::font(ui::kCallout));
  QPalette palette;
  palette.setColor(QPalette::WindowText, kInk);
  palette.setColor(QPalette::Highlight, faded(kMoss, 0.35));
  palette.setColor(QPalette::HighlightedText, kInk);
  sample->setPalette(palette);
  auto* copy = filledButton(text("onboarding.practice.copy"), ui::kCaption, ui::padding(12, 6),
                            ui::kCapsule);
  connect(copy, &QAbstractButton::clicked, this, [this] {
    if (state_.onPracticeCopy) state_.onPracticeCopy();
  });
  constexpr int kSpacing = 10;
  const int sampleWidth = kCardWidth - kSpacing - copy->width();
  sample->setFixedSize(sampleWidth, sample->heightForWidth(sampleWidth));
  copyGuide_ = new ui::Paragraph(text("onboarding.practice.step1"), ui::kCaption, kSubInk,
                                 {.width = kCardWidth, .alignment = Qt::AlignLeading});
  copyFeedback_ = feedback("onboarding.practice.stacked");
  copyCard_ = card();
  ui::layOutColumn(*copyCard_, {.spacing = 10, .padding = ui::padding(kCardPadding, kCardPadding)},
                   {ui::row({.spacing = kSpacing}, {sample, copy}), copyGuide_, copyFeedback_});
  return copyCard_;
}

QWidget* OnboardingView::pasteCard() {
  pasteFeedback_ = feedback("onboarding.practice.pasted");
  pasteCard_ = card();
  ui::layOutColumn(*pasteCard_, {.spacing = 10, .padding = ui::padding(kCardPadding, kCardPadding)},
                   {new ui::Paragraph(text("onboarding.practice.step2"), ui::kCaption, kSubInk,
                                      {.width = kCardWidth, .alignment = Qt::AlignLeading}),
                    practiceField(), pasteFeedback_});
  return pasteCard_;
}

QWidget* OnboardingView::practiceField() {
  constexpr double kRadius = 5;
  field_ = new ui::TextField(
      ui::kCallout, {.text = kInk, .placeholder = faded(kSubInk, 0.7), .tint = kMoss}, pasteboard_);
  const QString placeholder = text("onboarding.practice.paste_placeholder");
  field_->setPlaceholderText(placeholder);
  field_->setAccessibleName(placeholder);
  connect(field_, &QLineEdit::textChanged, this, [this](const QString& now) {
    std::string text = now.toStdString();
    if (text != state_.practicePasteText.value()) state_.practicePasteText.set(std::move(text));
  });
  auto* frame = new ui::ShapeBox(kRadius, Qt::white);
  frame->setBorder(faded(kInk, 0.22));
  field_->setPadding(7, 4);
  ui::layOutColumn(*frame, {}, {field_});
  return frame;
}

QWidget* OnboardingView::feedback(const char* key) {
  return ui::row({.spacing = 6},
                 {new ui::Symbol("checkmark.seal.fill", ui::kCaption, kMoss),
                  new ui::Label(text(key), ui::kCaption.semibold(), kInk), ui::Spacer()});
}

QWidget* OnboardingView::dots() {
  dots_ = new Dots(static_cast<int>(OnboardingViewState::kLastStep) + 1);
  return ui::row({.padding = {0, 0, 0, 18}}, {ui::Spacer(), dots_, ui::Spacer()});
}

QWidget* OnboardingView::navigationBar() {
  back_ = new ui::Button(text("onboarding.back"), {.style = ui::kCallout, .text = kSubInk});
  connect(back_, &QAbstractButton::clicked, this, [this] { go(-1); });
  next_ = filledButton("", ui::kCallout, ui::padding(22, 10), 10);
  connect(next_, &QAbstractButton::clicked, this, [this] {
    if (state_.step.value() < OnboardingViewState::kLastStep) {
      go(1);
    } else if (state_.onFinish) {
      state_.onFinish();
    }
  });
  return ui::row({.padding = {32, 0, 32, 28}}, {back_, ui::Spacer(), next_});
}

void OnboardingView::go(std::int64_t by) {
  fade_->run([&] { state_.step.set(state_.step.value() + by); });
}

void OnboardingView::observe() {
  subscriptions_.push_back(state_.step.observe([this](std::int64_t step) { showStep(step); }));
  subscriptions_.push_back(state_.axTrusted.observe([this](bool trusted) {
    asking_->setVisible(!trusted);
    granted_->setVisible(trusted);
    highlight(accessibilityCard_, trusted);
  }));
  subscriptions_.push_back(state_.practiceCopied.observe([this](bool copied) {
    copyGuide_->setVisible(!copied);
    copyFeedback_->setVisible(copied);
    highlight(copyCard_, copied);
    if (copied && field_->isVisible()) field_->setFocus();  // the sample is to be pasted there next
  }));
  subscriptions_.push_back(state_.practicePasted.observe([this](bool pasted) {
    pasteFeedback_->setVisible(pasted);
    highlight(pasteCard_, pasted);
  }));
  subscriptions_.push_back(state_.practicePasteText.observe([this](const std::string& text) {
    const QString shown = QString::fromStdString(text);
    if (shown != field_->text()) field_->setText(shown);
  }));
}

void OnboardingView::showStep(std::int64_t step) {
  const bool last = step >= OnboardingViewState::kLastStep;
  pages_->setCurrentIndex(static_cast<int>(std::min(step, OnboardingViewState::kLastStep)));
  static_cast<Dots*>(dots_)->setCurrent(static_cast<int>(step));
  back_->setVisible(step >= 1);
  next_->setLabel(text(last ? "onboarding.start" : "onboarding.next"));
  next_->setFocus();
}

void OnboardingView::paintEvent(QPaintEvent*) {
  QPainter(this).fillRect(rect(), kBackground);
}

}  // namespace brimlo
