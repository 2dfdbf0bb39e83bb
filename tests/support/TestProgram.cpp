#include "support/TestProgram.h"

#include <QTest>

#include <cstdio>
#include <map>

#if defined(QT_WIDGETS_LIB)
#include <QApplication>
using Application = QApplication;
#elif defined(QT_GUI_LIB)
#include <QGuiApplication>
using Application = QGuiApplication;
#else
using Application = QCoreApplication;
#endif

namespace {

std::map<QString, support::TestCreator>& Tests() {
  static std::map<QString, support::TestCreator> tests;
  return tests;
}

std::map<QString, support::Helper>& Helpers() {
  static std::map<QString, support::Helper> helpers;
  return helpers;
}

}  // namespace

bool support::AddTest(const char* name, TestCreator create) {
  return Tests().emplace(QString::fromUtf8(name), std::move(create)).second;
}

bool support::AddHelper(const char* name, Helper helper) {
  return Helpers().emplace(QString::fromUtf8(name), std::move(helper)).second;
}

int main(int argc, char** argv) {
  Application application(argc, argv);
  QStringList arguments = QCoreApplication::arguments();
  const QString name = arguments.value(1);
  if (const auto helper = Helpers().find(name); helper != Helpers().end()) {
    return helper->second(arguments.mid(2));
  }
  const auto test = Tests().find(name);
  if (test == Tests().end()) {
    std::fprintf(stderr, "no test of the name '%s'\n", qPrintable(name));
    return 2;
  }
  arguments.removeAt(1);
  return QTest::qExec(test->second().get(), arguments);
}
