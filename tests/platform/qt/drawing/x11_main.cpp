#include <gtest/gtest.h>

#include <QGuiApplication>
#include <optional>

#include "tools/stage/private_display.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
  const nimbletype::PrivateDisplay display;
  qputenv("DISPLAY", QByteArray::fromStdString(display.name()));
  qputenv("QT_QPA_PLATFORM", "xcb");
  int result = 1;
  {
    const QGuiApplication application(argc, argv);
    result = RUN_ALL_TESTS();
  }
  return result;
}
