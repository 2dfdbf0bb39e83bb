#pragma once

#include <QString>

#include <exception>

namespace automation {

/// Numbers of the runtime errors that this layer raises itself. A host may raise any other.
enum ErrorNumber : int {
  InvalidProcedureCall = 5,
  Overflow = 6,
  SubscriptOutOfRange = 9,
  TypeMismatch = 13,
  FileNotFound = 53,
  ObjectNotSet = 91,
  InvalidUseOfNull = 94,
  ResourceNotFound = 326,
  FormAlreadyShown = 400,
  ObjectRequired = 424,
  CannotCreateObject = 429,
  NoSuchMember = 438,
  ArgumentNotOptional = 449,
  WrongNumberOfArguments = 450,
  KeyAlreadyUsed = 457,
};

/// A runtime error: a number, a Spanish description and the name of what raised it.
/// It is thrown by value and travels through late-bound calls unchanged.
class Error : public std::exception {
 public:
  /// An error with the runtime's own text for `number` (see ErrorText).
  explicit Error(int number);
  Error(int number, QString description, QString source = {});
  ~Error() override;

  int Number() const { return m_number; }
  const QString& Description() const { return m_description; }
  const QString& Source() const { return m_source; }
  /// The description in UTF-8.
  const char* what() const noexcept override { return m_what.constData(); }

 private:
  int m_number;
  QString m_description;
  QString m_source;
  QByteArray m_what;
};

/// The Spanish text of a runtime error; the text of 440 ("Error de Automatización") for an unknown number.
QString ErrorText(int number);

/// The error that is being handled, as a procedure that reports it finds it.
/// Set by the handler that caught it, read by whoever shows it. One per process: every call comes from the
/// user-interface thread. `Number` 0 means none.
struct ErrObject {
  int Number = 0;
  QString Description;
  QString Source;

  void Set(const Error& error);
  void Clear();
};

ErrObject& Err();

/// Turns the exception in flight into an Error: an Error is returned as it is, memory exhaustion becomes 7,
/// anything else 440 with its own text. Call it in a catch block.
Error CurrentError();

}  // namespace automation
