#include "letters/editor/UndoSteps.h"

#include <QTextDocument>
#include <QTextEdit>

#include <algorithm>

namespace letters {

UndoSteps::UndoSteps(QTextEdit& editor) : m_editor(editor), m_available(Available()) {
  connect(editor.document(), &QTextDocument::undoCommandAdded, this, &UndoSteps::ForgetUndone);
}

int UndoSteps::Available() const {
  return m_editor.document()->availableUndoSteps();
}

/// What is done after an undo takes the place of what was undone.
void UndoSteps::ForgetUndone() {
  m_hidden.removeIf([this](const std::pair<int, int>& steps) { return steps.second > m_available; });
  m_available = Available();
}

void UndoSteps::Hide(const std::function<void()>& change) {
  const int before = Available();
  change();
  m_available = Available();
  if (!m_hidden.isEmpty() && m_hidden.last().second == before) {
    // Qt undoes them together.
    m_hidden.last().second = m_available;
  } else if (m_available > before) {
    m_hidden.append({before, m_available});
  }
}

void UndoSteps::Undo() {
  KeepCaret([this] {
    int before = 0;
    do {
      before = Available();
      m_editor.undo();
    } while (m_hidden.contains(std::pair(Available(), before)));
  });
  m_available = Available();
}

void UndoSteps::Redo() {
  KeepCaret([this] {
    m_editor.redo();
    const QTextCursor caret = m_editor.textCursor();
    const auto isBefore = [this](const std::pair<int, int>& steps) { return steps.first == Available(); };
    while (m_editor.document()->isRedoAvailable() && std::any_of(m_hidden.begin(), m_hidden.end(), isBefore)) {
      m_editor.redo();
    }
    m_editor.setTextCursor(caret);
  });
  m_available = Available();
}

// Qt puts the caret behind what has changed: after the format of a paragraph, into the next one.
void UndoSteps::KeepCaret(const std::function<void()>& step) {
  const QTextCursor caret = m_editor.textCursor();
  bool isWithin = true;
  const auto watch =
      connect(m_editor.document(), &QTextDocument::contentsChange, this, [&](int from, int removed, int added) {
        const bool isFormat = removed == added;
        isWithin = isWithin && isFormat && caret.position() >= from && caret.position() <= from + added;
      });
  step();
  disconnect(watch);
  if (isWithin) {
    m_editor.setTextCursor(caret);
  }
}

}  // namespace letters
