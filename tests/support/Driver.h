#pragma once

#include <QDialog>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <memory>
#include <stdexcept>

namespace support {

/// A step of a script that could not be done.
inline std::runtime_error Failure(const char* what, const QString& name) {
  return std::runtime_error(what + (' ' + name.toStdString()));
}

/// A dialog that is open, used as a person uses it. Every function throws std::runtime_error when the control that it
/// names is missing, hidden or of another kind, so that a step that never ran can't pass.
class DialogUser {
 public:
  explicit DialogUser(QDialog* dialog) : m_dialog(dialog) {}

  QDialog* Dialog() const { return m_dialog; }
  template <typename Control = QWidget>
  Control* Find(const char* name) const {
    auto* control = m_dialog->findChild<Control*>(QString::fromUtf8(name));
    if (control == nullptr) {
      throw Failure("no control", QString::fromUtf8(name));
    }
    return control;
  }

  /// Replaces the text of a line edit by typing.
  void Type(const char* name, const QString& text) const;
  /// Types into a control that has the focus and whatever text, key by key, without replacing.
  void Keys(const char* name, const QString& keys) const;
  void Paste(const char* name, const QString& text) const;
  /// Clicks a button, enabled or not, as a mouse does.
  void Press(const char* name) const;
  /// Selects the item of a combo by its text.
  void Choose(const char* name, const QString& text) const;
  /// Text of a line edit, label, button or group, of a combo's selected item, or the title for "".
  QString Text(const char* name) const;
  QStringList Items(const char* combo) const;
  bool IsEnabled(const char* name) const;
  bool IsVisible(const char* name) const;
  /// The name of the control that has the dialog's focus.
  QString Focused() const;
  /// The close box.
  void Close() const;
  void Key(Qt::Key key) const;
  void Screenshot(const QString& file) const;

 private:
  QWidget* Usable(const char* name) const;

  QPointer<QDialog> m_dialog;
};

/// Answers the windows that a call opens while it blocks. Message and input boxes take the next answer of a script;
/// other dialogs the script registered for their name. What was not foreseen is closed and becomes a problem.
class Driver : public QObject {
 public:
  using Script = std::function<void(const DialogUser&)>;

  Driver();
  ~Driver() override;

  /// The next time the dialog of that name shows, runs `script`; a dialog still open after its script is closed and
  /// becomes a problem. Several scripts for one name are used in order.
  void On(const char* dialog, Script script);
  /// The next message box gets this answer, a QMessageBox::StandardButton; the next input box that text, or a cancel
  /// for a null text.
  void Answer(int button);
  void AnswerInput(const QString& text);
  /// The next message box is closed by its close box or Escape.
  void AnswerByClosing();

  /// How a dialog ends that its script left open, unless by QDialog::done.
  void EndBy(std::function<void(QDialog&)> end) { m_end = std::move(end); }

  /// Boxes shown so far, a line each: "title|icon|text", with icon one of ninguno, informacion, aviso, critico,
  /// pregunta, and "|further text" and "|details" where a box has them. A box whose text is not plain is a problem.
  QStringList Boxes() const { return m_boxes; }
  QStringList TakeBoxes();
  /// Everything that went otherwise than scripted, and clears it. A test compares it with an empty list.
  QStringList TakeProblems();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void OnShown(QDialog* dialog);
  void OnMessageBox(QDialog* dialog);
  void OnInputBox(QDialog* dialog);
  void OnDialog(QDialog* dialog);

  struct PlannedAnswer {
    bool input = false;
    int button = 0;
    QString text = {};
  };
  struct PlannedScript {
    QString dialog;
    Script script;
  };
  QList<PlannedAnswer> m_answers;
  QList<PlannedScript> m_scripts;
  std::function<void(QDialog&)> m_end = [](QDialog& dialog) { dialog.done(QDialog::Rejected); };
  QStringList m_boxes;
  QStringList m_problems;
};

}  // namespace support
