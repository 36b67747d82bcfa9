// Widget tests share one QApplication (offscreen platform under CTest).
#include <gtest/gtest.h>

#include <QApplication>
#include <QStyleFactory>

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
