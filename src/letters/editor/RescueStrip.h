#pragma once

#include "letters/editor/RecoveryFile.h"

#include <functional>

namespace letters {

class RunningCopy;
struct LetterWindow;

/// Keeps the letter when it can't be stored, and offers one that was kept under the page, without a question that
/// stands in the way.
class RescueStrip {
 public:
  explicit RescueStrip(LetterWindow& window);

  /// Shows what was kept of that record, or for record 0 of any.
  void Offer(qint32 record);
  /// Puts what is offered into the editor; it stays kept until the letter is stored.
  void Take();
  /// Throws what is offered away.
  void Drop();
  /// The letter was loaded: while somebody writes it is kept now and then, and a failure to do so stands in the strip.
  void Watch(qint32 record, const QString& name);
  /// The user gave the changes up.
  void GiveUp();
  /// Stores the letter; afterwards one that was taken from where it was kept is dropped there. When it fails the letter
  /// is kept and the error goes on. False where it can't be kept either: the user has been told, and the editor is the
  /// only place that has the text.
  bool Guard(qint32 record, const QString& name, const std::function<void()>& store);
  /// Keeps a letter that was changed; false as above.
  bool KeepChanged(qint32 record, const QString& name);

 private:
  bool Keep(qint32 record, const QString& name);

  LetterWindow& m_window;
  RunningCopy* m_copy;
  std::optional<Rescued> m_offered;
  bool m_taken = false;
};

}  // namespace letters
