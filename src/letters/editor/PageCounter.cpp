#include "letters/editor/PageCounter.h"

#include "letters/editor/LetterWindow.h"

#include <QLabel>

#include <chrono>

using namespace Qt::StringLiterals;

namespace letters {

namespace {

constexpr std::chrono::milliseconds idleTime{400};
// Some sixty pages, which take about a tenth of a second.
constexpr int mostCharacters = 200'000;

}  // namespace

PageCounter::PageCounter(LetterWindow& window) : m_window(window) {
  m_idle.setSingleShot(true);
  m_idle.setInterval(idleTime);
  connect(&m_idle, &QTimer::timeout, this, &PageCounter::Count);
  connect(window.rtfCarta, &LetterEdit::textChanged, this, &PageCounter::CountSoon);
  connect(window.rtfCarta, &LetterEdit::cursorPositionChanged, this, &PageCounter::Show);
  connect(window.picFondo, &LetterPage::MarginsChanged, this, &PageCounter::CountSoon);
  CountSoon();
}

void PageCounter::CountSoon() {
  m_idle.start();
}

void PageCounter::Count() {
  const QTextDocument& letter = *m_window.rtfCarta->document();
  m_pages.reset();
  if (letter.characterCount() <= mostCharacters && !m_window.rtfCarta->IsForReading()) {
    m_pages = std::make_unique<documents::LetterPainter>(letter, m_window.picFondo->CurrentMargins(),
                                                         m_window.picFondo->Paper());
  }
  Show();
}

void PageCounter::Show() {
  const int count = m_pages == nullptr ? 0 : m_pages->PageCount();
  m_window.lblPagina->setText(
      count == 0
          ? QString()
          : u"página %1 de %2"_s.arg(m_pages->PageOf(m_window.rtfCarta->textCursor().position()) + 1).arg(count));
}

}  // namespace letters
