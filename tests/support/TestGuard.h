#pragma once

#include <QObject>

/// What stands around every function of every test class, so that one fault is one report: a warning that no test
/// foresaw (QTest::ignoreMessage) fails the function; an exception fails it and ends nothing else; a window that it
/// left open is closed, and named unless the function failed anyway.
namespace support {

/// The function that Qt generates for a class: calls the method of that number, among the class's own.
using MetaCall = void(QObject* test, QMetaObject::Call call, int method, void** arguments);

/// Calls a method of a test class as Qt's generated code would, with the guard around it.
void GuardedCall(MetaCall* generated, QObject* test, QMetaObject::Call call, int method, void** arguments);

/// A test class whose functions Qt Test calls through the guard: Qt calls a method by the function that stands in the
/// public part of the class's QMetaObject, and here that is another one.
template <typename Class>
class Guarded : public Class {
 public:
  const QMetaObject* metaObject() const override {
    static const QMetaObject guarded = [] {
      QMetaObject copy = Class::staticMetaObject;
      copy.d.static_metacall = &Guarded::Invoke;
      return copy;
    }();
    return &guarded;
  }

 private:
  static void Invoke(QObject* test, QMetaObject::Call call, int method, void** arguments) {
    GuardedCall(Class::staticMetaObject.d.static_metacall, test, call, method, arguments);
  }
};

}  // namespace support
