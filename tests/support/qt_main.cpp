#include <gtest/gtest.h>

#ifdef BRIMLO_TEST_HAS_WINDOWS
#include <QGuiApplication>
using Application = QGuiApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

/// For tests that need the run loop.
int main(int argc, char** argv) {
  const Application application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
