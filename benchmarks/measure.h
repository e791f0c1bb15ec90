#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "base/uuid.h"
#include "store/clip.h"

/// What the benchmarks share: a history, and a comparison whose sides take turns, so that neither
/// meets a quieter machine than the other.
namespace brimlo {

inline double milliseconds(const std::function<void()>& work) {
  const auto begin = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin)
      .count();
}

inline double median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
  return values[values.size() / 2];
}

struct Side {
  std::function<void()> work;
  std::function<void()> cleanUp = [] {};  // not timed
};

inline void report(const char* name, int rounds, double allowed, const Side& ours,
                   const Side& limit) {
  // What a side leaves to the background is over before the other begins.
  const auto settle = [] { std::this_thread::sleep_for(std::chrono::milliseconds(30)); };
  std::vector<double> oursMs, limitMs;
  for (int round = 0; round <= rounds; ++round) {
    limitMs.push_back(milliseconds(limit.work));
    limit.cleanUp();
    settle();
    oursMs.push_back(milliseconds(ours.work));
    ours.cleanUp();
    settle();
    if (round == 0) {  // warms up what both use
      limitMs.clear();
      oursMs.clear();
    }
  }
  const double ratio = median(oursMs) / median(limitMs);
  std::printf("%-34s %10.3f ms %10.3f ms %7.2f  (to reach: %.2f)%s\n", name, median(oursMs),
              median(limitMs), ratio, allowed, ratio <= allowed ? "" : "  MISSED");
  std::fflush(stdout);
}

inline void printHeading() {
  std::printf("%-34s %13s %13s %7s\n", "", "ours", "limit", "ratio");
}

/// A text of 20 to 380 characters as people copy them: words, addresses, code, other scripts.
inline std::string makeText(std::mt19937& random) {
  static constexpr std::string_view kWords[] = {
      "the",     "quick", "clipboard", "history",  "https://example.org/a?b=1",
      "SELECT",  "*",     "FROM",      "users",    "const auto value = lookup(key);",
      "and",     "of",    "meeting",   "tomorrow", "\"quoted\"",
      "return;", "\n",    "\t",        "café",     "日本語"};
  const std::size_t length = 20 + random() % 361;
  std::string text = std::to_string(random()) + " ";
  const bool ascii = random() % 10 != 0;
  while (text.size() < length) {
    text += kWords[random() % (std::size(kWords) - (ascii ? 2 : 0))];
    text += ' ';
  }
  return text;
}

inline std::vector<ClipPtr> makeHistory(std::size_t count) {
  std::mt19937 random(7);
  std::vector<ClipPtr> clips;
  for (std::size_t i = 0; i < count; ++i) {
    clips.push_back(std::make_shared<Clip>(Clip{
        makeUuid(), makeText(random), 1.7e12 - static_cast<double>(i) * 1000.25, "manual", {}}));
  }
  return clips;
}

}  // namespace brimlo
