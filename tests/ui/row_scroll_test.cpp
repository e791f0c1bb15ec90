#include "ui/row_scroll.h"

#include <gtest/gtest.h>

#include <string>

namespace brimlo::ui {
namespace {

class RowScrollTest : public testing::Test {
 protected:
  /// The rows in sight as "row@top".
  std::string shown() {
    std::string all;
    for (const auto& [row, top, height] : scroll.rowsInSight()) {
      EXPECT_EQ(height, heights[row % heights.size()]);
      all += std::to_string(row) + "@" + std::to_string(static_cast<int>(top)) + " ";
    }
    return all;
  }

  int viewHeight = 80;
  std::vector<int> heights{20, 30, 20, 40, 20};
  int measured = 0;
  RowScroll scroll{{.height = [this] { return viewHeight; },
                    .rowHeight =
                        [this](std::size_t row) {
                          EXPECT_LT(row, scroll.rowCount());
                          ++measured;
                          return heights[row % heights.size()];
                        },
                    .spacing = 2,
                    .padding = 6}};
};

TEST_F(RowScrollTest, ScrollsByPixelsRowsAndTheIndicatorBetweenBothEnds) {
  const std::string top = "0@6 1@28 2@60 ", bottom = "2@-10 3@12 4@54 ";
  const std::pair<std::function<void()>, std::string> steps[] = {
      {[&] { scroll.setRowCount(5); }, top},
      {[&] { scroll.scrollBy(0.4); }, top},
      {[&] { scroll.scrollBy(49.6); }, "1@-22 2@10 3@32 4@74 "},
      {[&] { scroll.scrollBy(-20); }, "1@-2 2@30 3@52 "},
      {[&] { scroll.scrollBy(-5); }, "0@-19 1@3 2@35 3@57 "},
      {[&] { scroll.scrollBy(1000); }, bottom},
      {[&] { scroll.scrollBy(-1000); }, top},
      {[&] { scroll.setPosition(2); }, "2@0 3@22 4@64 "},
      {[&] { scroll.setPosition(4.5); }, bottom},
      {[&] { scroll.setPosition(scroll.centeredPosition(3)); }, "2@-2 3@20 4@62 "},
      {[&] { scroll.setPosition(scroll.centeredPosition(1)); }, "0@3 1@25 2@57 3@79 "},
      {[&] { scroll.setPosition(scroll.centeredPosition(0)); }, top},
      {[&] { scroll.setPosition(scroll.centeredPosition(4)); }, bottom},
      {[&] { scroll.moveIndicator(-9); }, top},
      {[&] { scroll.moveIndicator(79 - scroll.indicator()->length); }, bottom},
      {[&] { scroll.setRowCount(7); }, "2@-10 3@12 4@54 5@76 "},
      {[&] { scroll.setRowCount(3); }, "0@0 1@22 2@54 "},
      {[&] { heights = {200}, scroll.remeasure(); }, "0@-39 "},
      {[&] { scroll.setPosition(scroll.centeredPosition(0)); }, "0@-60 "},
      {[&] { viewHeight = 700, scroll.remeasure(); }, "0@6 1@208 2@410 "},
      {[&] { scroll.setRowCount(0), scroll.scrollBy(9); }, ""},
  };
  for (const auto& each : steps) {
    each.first();
    EXPECT_EQ(shown(), each.second) << "step " << &each - steps;
  }
}

TEST_F(RowScrollTest, TheIndicatorIsAsLongAsThePartInSightAndNeverTooShortToGrip) {
  EXPECT_FALSE(scroll.indicator());
  scroll.setRowCount(2);
  EXPECT_FALSE(scroll.indicator()) << "all rows fit";
  scroll.setRowCount(5);
  EXPECT_DOUBLE_EQ(scroll.indicator()->top, 1);
  EXPECT_DOUBLE_EQ(scroll.indicator()->length, 78 * (1 - scroll.lastPosition() / 5));
  measured = 0;
  scroll.setRowCount(100'000);
  scroll.moveIndicator(26);
  EXPECT_DOUBLE_EQ(scroll.indicator()->top, 26);
  EXPECT_DOUBLE_EQ(scroll.indicator()->length, 28);
  EXPECT_DOUBLE_EQ(scroll.position(), scroll.lastPosition() / 2);
  shown();
  EXPECT_LT(measured, 20) << "only what is in sight here and at the end";
}

}  // namespace
}  // namespace brimlo::ui
