#pragma once

#include <QLabel>
#include <QLineEdit>

namespace host {

/// A box for a password, with a button that shows what was typed until it is pressed again.
class PasswordLine : public QLineEdit {
  Q_OBJECT

 public:
  explicit PasswordLine(const QString& name, QWidget* parent = nullptr);
};

/// A form of passwords is at least so wide, so that its sentences stay short.
constexpr int formCharacters = 56;

/// What a form of passwords has to say; hidden while that is nothing. Screen readers are told.
class AlertLabel : public QLabel {
  Q_OBJECT

 public:
  explicit AlertLabel(QWidget* parent = nullptr);

  /// The window grows by it.
  void Say(const QString& text);

 private:
  void MakeRoom();
};

}  // namespace host
