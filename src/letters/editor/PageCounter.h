#pragma once

#include "documents/letter/LetterPainter.h"

#include <QObject>
#include <QTimer>

#include <memory>

namespace letters {

struct LetterWindow;

/// Says under the letter on which of its pages the caret is. Pages are those of the paper: it lays a copy out when
/// nobody has typed for a moment, and leaves letters alone for which that takes long.
class PageCounter : public QObject {
 public:
  explicit PageCounter(LetterWindow& window);

  /// The text or the margins changed.
  void CountSoon();

 private:
  void Count();
  void Show();

  LetterWindow& m_window;
  QTimer m_idle;
  std::unique_ptr<documents::LetterPainter> m_pages;
};

}  // namespace letters
