#include "documents/rtf/Patch.h"

#include "documents/rtf/Numbering.h"
#include "documents/rtf/Rewording.h"
#include "documents/rtf/Tokenizer.h"
#include "documents/rtf/Writer.h"

#include <QMap>
#include <QTextList>

#include <algorithm>

namespace rtf {

namespace {

/// Parts from `from` on that are written anew: up to `end` of those that were read, `endNow` of those that there are.
struct Stretch {
  qsizetype from = 0;
  qsizetype end = 0;
  qsizetype endNow = 0;

  bool IsEmpty() const { return from == end && from == endNow; }
  bool Back() { return --from >= 0; }
  bool On(qsizetype parts) {
    ++endNow;
    return ++end <= parts;
  }
};

/// Whether its items have numbers; none is no list.
bool IsNumber(const QTextList* list) {
  return list != nullptr && list->format().style() <= QTextListFormat::ListDecimal;
}

class Patch {
 public:
  Patch(const QTextDocument& document, const QByteArray& original, const QList<Part>& read, const QList<Part>& now,
        const Seams& seams)
      : m_document(document), m_original(original), m_read(read), m_now(now), m_seams(seams) {}

  /// None where bytes that have to be written anew say more than their parts.
  std::optional<Stretch> Find() {
    FindChange();
    if (m_change.IsEmpty()) {
      return m_change;
    }
    if (m_seams.at.size() != m_read.size() + 1) {
      return std::nullopt;
    }
    const bool isBound = !Widen() || std::any_of(m_seams.bound.begin(), m_seams.bound.end(), [this](qsizetype part) {
      return part >= m_change.from && part < m_change.end;
    });
    return isBound || m_change.from == m_change.endNow ? std::nullopt : std::optional(m_change);
  }

  /// What was only reworded, outside the stretch.
  QList<Splice> Reworded() const {
    QList<Splice> splices;
    for (auto it = m_reworded.begin(); it != m_reworded.end(); ++it) {
      if (it.key() < m_change.from || it.key() >= m_change.end) {
        splices += *it;
      }
    }
    return splices;
  }

  QTextBlock First() const { return Block(m_now[m_change.from].first); }
  QTextBlock Last() const { return Block(m_now[m_change.endNow - 1].last); }

 private:
  QTextBlock Block(int number) const { return m_document.findBlockByNumber(number); }

  void FindChange() {
    const auto behind = std::mismatch(m_read.begin(), m_read.end(), m_now.begin(), m_now.end());
    m_change = {behind.first - m_read.begin(), m_read.size(), m_now.size()};
    const auto same = [](const Part& read, const Part& now) { return read == now; };
    TrimEnd(same);
    // Only now, as reading the original again takes its time.
    const Rewording rewording(m_document, m_original);
    const auto reworded = [&](const Part& read, const Part& now) {
      const auto splices = read == now ? QList<Splice>() : rewording.SplicesFor(read, now);
      if (splices) {
        m_reworded.insert(&read - m_read.constData(), *splices);
      }
      return splices.has_value();
    };
    TrimEnd(reworded);
    while (m_change.from < std::min(m_change.end, m_change.endNow) &&
           reworded(m_read[m_change.from], m_now[m_change.from])) {
      ++m_change.from;
    }
  }

  template <typename IsKept>
  void TrimEnd(const IsKept& isKept) {
    while (m_change.end > m_change.from && m_change.endNow > m_change.from &&
           isKept(m_read[m_change.end - 1], m_now[m_change.endNow - 1])) {
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
    const int lastItem = renumbers ? LastItemGoingOn() : -1;
    for (;;) {
      const Seam& begin = m_seams.at[m_change.from];
      const Seam& end = m_seams.at[m_change.end];
      const bool beginsWithin = !begin.IsClean() || (m_change.from > 0 && ContinuesALink(m_change.from));
      const bool endsWithin =
          !end.IsClean() ||
          (m_change.end < m_read.size() && (ContinuesAPage(m_change.endNow) || ContinuesALink(m_change.endNow) ||
                                            (renumbers && IsNumbered()) || m_now[m_change.endNow].first <= lastItem));
      if (!beginsWithin && !endsWithin && begin.group == end.group) {
        return true;
      }
      const bool back = beginsWithin || (!endsWithin && begin.group > end.group);
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
  bool IsNumbered() const { return IsNumber(Block(m_now[m_change.endNow].first).textList()); }

  /// The last item of those behind the change whose list began in front of them and is of the older notation: what it
  /// goes on with says its mark, or the paragraph before it.
  int LastItemGoingOn() const {
    int last = -1;
    const QTextBlock begin = m_change.end < m_read.size() ? Block(m_now[m_change.endNow].first) : QTextBlock();
    for (QTextBlock block = begin; block.isValid(); block = block.next()) {
      const QTextList* list = block.textList();
      if (IsNumber(list) && list->item(0) < begin && !IsOfListTable(list->format())) {
        last = block.blockNumber();
      }
    }
    return last;
  }

  /// The break in front of it is written as the end of what is before it.
  bool ContinuesAPage(qsizetype part) const {
    return Block(m_now[part].first).blockFormat().intProperty(BreakProperty) == int(BreakKind::Within);
  }

  /// A field or object that began in front of it goes on in it: cut there it would be two.
  bool ContinuesALink(qsizetype part) const {
    const QTextBlock first = Block(m_now[part].first);
    const QTextCharFormat before = first.previous().charFormat();
    const QTextCharFormat behind = first.begin().atEnd() ? first.charFormat() : first.begin().fragment().charFormat();
    const Links links = before.property(LinkProperty).value<Links>();
    return !links.isEmpty() && links.first() == behind.property(LinkProperty).value<Links>().value(0);
  }

  const QTextDocument& m_document;
  const QByteArray& m_original;
  const QList<Part>& m_read;
  const QList<Part>& m_now;
  const Seams& m_seams;
  Stretch m_change;
  QMap<qsizetype, QList<Splice>> m_reworded;  ///< By part.
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

/// What `table` has beyond the same table as it was read, which ends at `end`.
std::optional<Splice> Extension(qsizetype end, const QByteArray& read, const QByteArray& table) {
  if (end < 0 || read.isEmpty()) {
    return std::nullopt;
  }
  if (table.startsWith(read)) {
    return Splice{end, 0, table.sliced(read.size())};
  }
  if (table.startsWith(read.chopped(1))) {
    return Splice{end - 1, 0, table.sliced(read.size() - 1).chopped(1)};
  }
  return std::nullopt;
}

/// New fonts and colours; false where there is no table to put them into.
bool ExtendTables(const WriterTables& tables, const PreambleData& preamble, const Seams& seams,
                  QList<Splice>& splices) {
  const auto add = [&](qsizetype end, const QByteArray& read, const QByteArray& table) {
    const std::optional<Splice> splice = Extension(end, read, table);
    if (splice) {
      splices.append(*splice);
    }
    return splice.has_value();
  };
  return (!tables.HasNewFonts() || add(seams.fontsEnd, preamble.fontTables, tables.FontGroups())) &&
         (!tables.HasNewColours() || add(seams.coloursEnd, preamble.colourTables, tables.ColourGroups()));
}

}  // namespace

std::optional<QByteArray> Patched(const QTextDocument& document, const QByteArray& original, const QList<Part>& read,
                                  const QList<Part>& now, const Seams& seams) {
  Patch patch(document, original, read, now, seams);
  const std::optional<Stretch> change = patch.Find();
  if (!change) {
    return std::nullopt;
  }
  QList<Splice> splices = patch.Reworded();
  if (change->IsEmpty()) {
    return Spliced(original, splices);
  }
  const Seam& begin = seams.at[change->from];
  const Seam& end = seams.at[change->end];
  if (begin.offset < seams.lastTable) {
    return std::nullopt;
  }
  Writer writer(document);
  const QByteArray part =
      Written(writer, patch, seams.states[begin.state], seams.states[end.state], original.sliced(end.offset));
  if (!ExtendTables(writer.Tables(), *PreambleOf(document).data, seams, splices)) {
    return std::nullopt;
  }
  splices.append({begin.offset, end.offset - begin.offset, part});
  return Spliced(original, splices);
}

}  // namespace rtf
