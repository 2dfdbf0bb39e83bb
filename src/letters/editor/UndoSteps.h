#pragma once

#include <QList>
#include <QObject>

#include <functional>
#include <utility>

class QTextEdit;

namespace letters {

/// The undo of the letter that an editor shows, in which a change that shows nothing is no step: it goes with the step
/// before it. A step of formats around the caret or the selection leaves it where it is.
class UndoSteps : public QObject {
 public:
  /// For the document that `editor` has now.
  explicit UndoSteps(QTextEdit& editor);

  /// Makes a change of formats that shows nothing.
  void Hide(const std::function<void()>& change);
  void Undo();
  void Redo();

 private:
  int Available() const;
  void ForgetUndone();
  void KeepCaret(const std::function<void()>& step);

  QTextEdit& m_editor;
  /// The numbers of available steps before hidden changes and behind them.
  QList<std::pair<int, int>> m_hidden;
  int m_available = 0;
};

}  // namespace letters
