// Widget tests share one QApplication (offscreen platform under CTest).
#include <gtest/gtest.h>

#include <QApplication>
#include <QStyleFactory>
#include <QTemporaryFile>

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // The offscreen screen as large as a desktop's (it is 800 x 800 by default), so the main
  // window opens at its own size, 1560 x 920, as on a user's screen.
  QTemporaryFile screens;
  if (qgetenv("QT_QPA_PLATFORM") == "offscreen" && screens.open()) {
    screens.write(R"({"screens": [{"name": "desktop", "x": 0, "y": 0, "width": 1920,
                                    "height": 1080, "logicalDpi": 96}]})");
    screens.flush();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName().toLocal8Bit());
  }
  QApplication app(argc, argv);
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
