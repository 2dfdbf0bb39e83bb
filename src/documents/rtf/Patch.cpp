#include "documents/rtf/Patch.h"

#include "documents/rtf/Tokenizer.h"
#include "documents/rtf/Writer.h"

#include <QTextList>

#include <algorithm>

namespace rtf {

namespace {

/// Parts from `from` on that are written anew: up to `end` of those that were read, `endNow` of those that there are.
struct Stretch {
  qsizetype from = 0;
  qsizetype end = 0;
  qsizetype endNow = 0;

  bool Back() { return --from >= 0; }
  bool On(qsizetype parts) {
    ++endNow;
    return ++end <= parts;
  }
};

class Patch {
 public:
  Patch(const QTextDocument& document, const QList<Part>& read, const QList<Part>& now, const Seams& seams)
      : m_document(document), m_read(read), m_now(now), m_seams(seams) {}

  /// None where bytes that have to be written anew say more than their parts.
  std::optional<Stretch> Find() {
    FindChange();
    const bool isBound = !Widen() || std::any_of(m_seams.bound.begin(), m_seams.bound.end(), [this](qsizetype part) {
      return part >= m_change.from && part < m_change.end;
    });
    return isBound || m_change.from == m_change.endNow ? std::nullopt : std::optional(m_change);
  }

  QTextBlock First() const { return Block(m_now[m_change.from].first); }
  QTextBlock Last() const { return Block(m_now[m_change.endNow - 1].last); }

 private:
  QTextBlock Block(int number) const { return m_document.findBlockByNumber(number); }

  void FindChange() {
    const auto behind = std::mismatch(m_read.begin(), m_read.end(), m_now.begin(), m_now.end());
    m_change.from = behind.first - m_read.begin();
    m_change.end = m_read.size();
    m_change.endNow = m_now.size();
    while (m_change.end > m_change.from && m_change.endNow > m_change.from &&
           m_read[m_change.end - 1] == m_now[m_change.endNow - 1]) {
      --m_change.end;
      --m_change.endNow;
    }
  }

  /// To where the bytes around can be kept.
  bool Widen() {
    // How a paragraph ends depends on what the next one begins with.
    const bool isEmpty = m_change.from == m_change.end || m_change.from == m_change.endNow;
    if (m_change.from > 0 && (isEmpty || m_read[m_change.from].format != m_now[m_change.from].format)) {
      m_change.Back();
    } else if (isEmpty && !m_change.On(m_read.size())) {
      return false;
    }
    const bool renumbers = OtherItems();
    while (m_change.end < m_read.size() && (ContinuesAPage(m_change.endNow) || (renumbers && IsNumbered()))) {
      m_change.On(m_read.size());
    }
    for (;;) {
      const Seam& begin = m_seams.at[m_change.from];
      const Seam& end = m_seams.at[m_change.end];
      if (begin.IsClean() && end.IsClean() && begin.group == end.group &&
          !(m_change.end < m_read.size() && ContinuesAPage(m_change.endNow))) {
        return true;
      }
      const bool back = !begin.IsClean() || (end.IsClean() && begin.group > end.group);
      if (back ? !m_change.Back() : !m_change.On(m_read.size())) {
        return false;
      }
    }
  }

  /// Whether there may be more or fewer items of lists than there were.
  bool OtherItems() const {
    const auto other = [](const Part& a, const Part& b) { return a.format == b.format; };
    return !std::equal(m_read.begin() + m_change.from, m_read.begin() + m_change.end, m_now.begin() + m_change.from,
                       m_now.begin() + m_change.endNow, other);
  }

  /// The text of an item's number is part of its bytes.
  bool IsNumbered() const {
    const QTextList* list = Block(m_now[m_change.endNow].first).textList();
    return list != nullptr && list->format().style() <= QTextListFormat::ListDecimal;
  }

  /// The break in front of it is written as the end of what is before it.
  bool ContinuesAPage(qsizetype part) const {
    return Block(m_now[part].first).blockFormat().intProperty(BreakProperty) == int(BreakKind::Within);
  }

  const QTextDocument& m_document;
  const QList<Part>& m_read;
  const QList<Part>& m_now;
  const Seams& m_seams;
  Stretch m_change;
};

/// The changed part, so that what is read behind it is read as before. `rest` are those bytes.
QByteArray Written(Writer& writer, const Patch& patch, const ReadingState& before, const ReadingState& after,
                   const QByteArray& rest) {
  writer.WritePart(patch.First(), patch.Last(), before);
  Tokenizer tokenizer({rest.constData(), static_cast<std::size_t>(rest.size())});
  const Token first = tokenizer.Next();
  if (first.kind == TokenKind::GroupEnd) {
    // What is in force ends here.
    return writer.EndPart({});
  }
  const bool hasParagraph = first.kind == TokenKind::Word && first.text == "pard";
  if (!hasParagraph) {
    writer.TakeUpParagraph(after);
  }
  const Token second = tokenizer.Next();
  if (!hasParagraph || second.kind != TokenKind::Word || second.text != "plain") {
    writer.TakeUpCharacters(after);
  }
  return writer.EndPart(after);
}

/// Puts into `bytes` what `table` has beyond the same table as it was read, which ends at `end`.
bool Extend(QByteArray& bytes, qsizetype end, const QByteArray& read, const QByteArray& table) {
  if (end < 0 || end > bytes.size() || read.isEmpty()) {
    return false;
  }
  if (table.startsWith(read)) {
    bytes.insert(end, table.sliced(read.size()));
  } else if (table.startsWith(read.chopped(1))) {
    bytes.insert(end - 1, table.sliced(read.size() - 1).chopped(1));
  } else {
    return false;
  }
  return true;
}

}  // namespace

std::optional<QByteArray> Patched(const QTextDocument& document, const QByteArray& original, const QList<Part>& read,
                                  const QList<Part>& now, const Seams& seams) {
  if (seams.at.size() != read.size() + 1) {
    return std::nullopt;
  }
  Patch patch(document, read, now, seams);
  const std::optional<Stretch> change = patch.Find();
  if (!change) {
    return std::nullopt;
  }
  const Seam& begin = seams.at[change->from];
  const Seam& end = seams.at[change->end];
  Writer writer(document);
  const QByteArray rest = original.sliced(end.offset);
  const QByteArray part = Written(writer, patch, seams.states[begin.state], seams.states[end.state], rest);
  QByteArray head = original.first(begin.offset);
  const PreambleData& preamble = *PreambleOf(document).data;
  // From behind, so that places stay right.
  const bool coloursLast = seams.coloursEnd > seams.fontsEnd;
  for (const bool colours : {coloursLast, !coloursLast}) {
    const WriterTables& tables = writer.Tables();
    const bool complete =
        colours
            ? !tables.HasNewColours() || Extend(head, seams.coloursEnd, preamble.colourTables, tables.ColourGroups())
            : !tables.HasNewFonts() || Extend(head, seams.fontsEnd, preamble.fontTables, tables.FontGroups());
    if (!complete) {
      return std::nullopt;
    }
  }
  return head + part + rest;
}

}  // namespace rtf
