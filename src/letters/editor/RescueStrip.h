#pragma once

#include "letters/editor/RecoveryFile.h"

#include <functional>

namespace letters {

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
  /// Stores the letter. When that fails the letter is kept and the error goes on; afterwards one that was taken from
  /// where it was kept is dropped there.
  void Guard(qint32 record, const QString& name, const std::function<void()>& store);
  /// Keeps a letter that was changed.
  void KeepChanged(qint32 record, const QString& name) const;

 private:
  void Keep(qint32 record, const QString& name) const;

  LetterWindow& m_window;
  std::optional<Rescued> m_offered;
  bool m_taken = false;
};

}  // namespace letters
