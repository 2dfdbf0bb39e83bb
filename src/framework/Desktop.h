#pragma once

#include <QString>

#include <optional>

namespace framework {

/// What the dialogs ask of the desktop around them. Tests install another one; the real one uses Qt's own
/// message and input boxes, so that scripts and assistive technology find them.

/// Styles of a message box, added up: buttons, icon. The numbers are the classic runtime's.
enum MsgBoxStyle : int {
  vbOKOnly = 0,
  vbYesNoCancel = 3,
  vbYesNo = 4,
  vbCritical = 16,
  vbQuestion = 32,
  vbExclamation = 48,
  vbInformation = 64,
};

/// Answers of a message box.
enum MsgBoxResult : int { vbOK = 1, vbCancel = 2, vbAbort = 3, vbRetry = 4, vbIgnore = 5, vbYes = 6, vbNo = 7 };

/// Values of the screen's mouse pointer.
enum MousePointer : int { vbDefault = 0, vbHourglass = 11 };

class Desktop {
 public:
  virtual ~Desktop();

  /// Shows `text` (plain text, never markup) and waits. `style` is a sum of MsgBoxStyle. A box that is closed
  /// without a button answers vbCancel where it has that button, else vbNo, else vbOK.
  virtual int MsgBox(const QString& text, int style, const QString& title);
  /// Nothing when the user cancels.
  virtual std::optional<QString> InputBox(const QString& prompt, const QString& title, const QString& initial);
  virtual void Beep();
  virtual int PrinterCount();
  /// vbHourglass shows the waiting pointer over the whole application until vbDefault.
  virtual void SetMousePointer(MousePointer pointer);
  /// Lets pending window messages be processed, except input of the user.
  virtual void DoEvents();
  /// Opens the help file with the desktop's program for it; says so in a message box when it can't.
  virtual void ShowHelp(const QString& file, const QString& title);

  static Desktop& Current();
  /// Installs another desktop, or the real one again for null. The caller keeps ownership.
  static void Install(Desktop* desktop);
};

/// The hourglass while the object lives.
class Hourglass {
 public:
  Hourglass();
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;
  ~Hourglass();
};

}  // namespace framework
