#include <gtest/gtest.h>

#include <QCoreApplication>

/// For tests that need the run loop.
int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
