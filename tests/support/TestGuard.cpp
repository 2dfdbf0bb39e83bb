#include "support/TestGuard.h"

#include <QMetaMethod>
#include <QRegularExpression>
#include <QTest>

#include <exception>

#if defined(QT_WIDGETS_LIB)
#include <QApplication>
#include <QWidget>
#endif

using namespace Qt::StringLiterals;

namespace support {

namespace {

void Fail(const QString& message) {
  QTest::qFail(qPrintable(message), "", 0);
}

void CallAndCatch(MetaCall* generated, QObject* test, QMetaObject::Call call, int method, void** arguments) {
  try {
    generated(test, call, method, arguments);
  } catch (const std::exception& error) {
    Fail(u"exception: "_s + QString::fromUtf8(error.what()));
  } catch (...) {
    Fail(u"exception of an unknown kind"_s);
  }
}

void CloseWindows() {
#if defined(QT_WIDGETS_LIB)
  const QWidgetList windows = QApplication::topLevelWidgets();
  for (QWidget* window : windows) {
    if (window->isVisible()) {
      if (!QTest::currentTestFailed()) {
        Fail(u"left open: "_s + (window->objectName().isEmpty() ? window->windowTitle() : window->objectName()));
      }
      window->hide();
    }
  }
#endif
}

}  // namespace

void GuardedCall(MetaCall* generated, QObject* test, QMetaObject::Call call, int method, void** arguments) {
  const QMetaObject* type = test->metaObject();
  const QByteArray name =
      call == QMetaObject::InvokeMetaMethod ? type->method(type->methodOffset() + method).name() : QByteArray();
  if (name.isEmpty() || name.endsWith("_data")) {
    generated(test, call, method, arguments);
    return;
  }
  // The offscreen screen has warnings of its own, which say nothing of the program.
  QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
  CallAndCatch(generated, test, call, method, arguments);
  // Where a class has a last word after each function, its windows are its own until then.
  if (type->indexOfMethod("cleanup()") < 0 ? !name.startsWith("init") : name.startsWith("cleanup")) {
    CloseWindows();
  }
}

}  // namespace support
