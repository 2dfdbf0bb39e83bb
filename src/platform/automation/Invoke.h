#pragma once

#include <QByteArrayView>
#include <QObject>
#include <QVariant>

#include <array>
#include <span>
#include <type_traits>
#include <utility>

/// Late binding: the members of a QObject (its Q_PROPERTYs, its Q_INVOKABLE methods and slots) used by name,
/// without regard to case. Look-ups are kept per class.
///
/// Errors raised here: 91 for no object, 438 for a name that the class does not have (or a property that cannot
/// be read), 450 for too many arguments or a property that cannot be written, 449 for too few arguments, and
/// those of ConvertTo for an argument that does not fit. Errors that the member itself raises pass through.
namespace automation {

/// One argument of a call: a value, or a variable of the caller that the called method may write.
/// A by-reference argument refers to the caller's variable and must not outlive the call.
class Argument {
 public:
  template <typename T>
  requires(!std::is_same_v<std::remove_cvref_t<T>, Argument>)
      Argument(T&& value)  // NOLINT(bugprone-forwarding-reference-overload): the constraint leaves copying alone
      : m_value(ToVariant(std::forward<T>(value))) {}

  QVariant& Value() { return m_value; }
  /// Hands the value, changed by the callee, back to the caller's variable. Nothing for an argument by value.
  void WriteBack() const {
    if (m_writeBack != nullptr) {
      m_writeBack(m_target, m_value);
    }
  }
  bool IsReference() const { return m_writeBack != nullptr; }

 private:
  template <typename T>
  friend Argument Ref(T& variable);
  using Writer = void (*)(void* target, QVariant value);

  Argument(QVariant value, void* target, Writer writer)
      : m_value(std::move(value)), m_target(target), m_writeBack(writer) {}

  template <typename T>
  static QVariant ToVariant(T&& value) {
    using Plain = std::remove_cvref_t<T>;
    if constexpr (std::is_same_v<Plain, QVariant>) {
      return std::forward<T>(value);
    } else if constexpr (std::is_convertible_v<T, QObject*> && !std::is_same_v<Plain, std::nullptr_t>) {
      return QVariant::fromValue(static_cast<QObject*>(value));
    } else if constexpr (std::is_convertible_v<T, QString> && !std::is_same_v<Plain, QString>) {
      return QVariant(QString(std::forward<T>(value)));
    } else {
      return QVariant::fromValue(std::forward<T>(value));
    }
  }

  QVariant m_value;
  void* m_target = nullptr;
  Writer m_writeBack = nullptr;
};

void ConvertTo(QVariant& value, QMetaType type);

/// An argument by reference: `Call(api, "BloqueoRegistro", ..., Ref(held))`. `T` is bool, QString, int, QVariant
/// or another type of the conversions; what the callee leaves is converted to it.
template <typename T>
Argument Ref(T& variable) {
  QVariant value;
  if constexpr (std::is_same_v<T, QVariant>) {
    value = variable;
  } else {
    value = QVariant::fromValue(variable);
  }
  return Argument(std::move(value), &variable, [](void* target, QVariant result) {
    if constexpr (std::is_same_v<T, QVariant>) {
      *static_cast<T*>(target) = std::move(result);
    } else {
      ConvertTo(result, QMetaType::fromType<T>());
      *static_cast<T*>(target) = result.template value<T>();
    }
  });
}

/// A member found once, for many uses on objects of the class that it was found in.
class Method {
 public:
  /// Raises 438 when `object`'s class has no such method, 91 for no object.
  Method(const QObject* object, QByteArrayView name);
  QVariant Call(QObject* object, std::span<Argument> arguments) const;

 private:
  const void* m_overloads;
};

QVariant Get(QObject* object, QByteArrayView name);
void Put(QObject* object, QByteArrayView name, const QVariant& value);
/// The value that the method returned, an invalid QVariant for none. A property without arguments may be called,
/// too: it is read.
QVariant CallWith(QObject* object, QByteArrayView name, std::span<Argument> arguments);

template <typename... Values>
QVariant Call(QObject* object, QByteArrayView name, Values&&... values) {
  std::array<Argument, sizeof...(Values)> arguments{Argument(std::forward<Values>(values))...};
  return CallWith(object, name, arguments);
}

}  // namespace automation
