#pragma once

#include <QMessageBox>
#include <QStringList>
#include <QTimer>

/// Answers the message boxes that appear while it lives, one answer for each, and notes their texts. A box beyond the
/// answers is closed with its default button, so that no test hangs; the notes show it.
class BoxAnswers {
 public:
  explicit BoxAnswers(QList<QMessageBox::StandardButton> answers = {});

  /// "text | further text" of each box.
  const QStringList& Texts() const { return m_texts; }

 private:
  void Look();

  QList<QMessageBox::StandardButton> m_answers;
  QStringList m_texts;
  QTimer m_timer;
};
