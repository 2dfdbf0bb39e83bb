#include "documents/rtf/StyleWriter.h"

#include <algorithm>
#include <iterator>

namespace rtf {

namespace {

QByteArray Control(const char* name) {
  return QByteArray("\\") + name;
}

/// A word and what belongs to it; none where it is not among them.
QList<CarriedWord> WithHead(const QList<CarriedWord>& words, std::uint16_t head) {
  QList<CarriedWord> some;
  std::copy_if(words.begin(), words.end(), std::back_inserter(some),
               [head](const CarriedWord& word) { return word.head == head; });
  return some;
}

}  // namespace

void StyleWriter::Toggle(const char* word, bool on) {
  if (on) {
    m_text.Word(word);
  } else {
    m_text.Word(word, 0);
  }
}

void StyleWriter::Reset() {
  m_text.Word("\\plain");
  m_current = {};
}

void StyleWriter::Characters(const CharacterStyle& style) {
  // What stands behind the word for the other direction is another script's font for some readers.
  if (m_current.rightToLeft && !style.rightToLeft) {
    m_text.Word("\\ltrch");
    m_current.rightToLeft = false;
  }
  if (style.font == defaultFont && m_current.font != defaultFont) {
    Reset();
  }
  CarriedCharacters(style);
  if (style.font != m_current.font) {
    m_text.Word("\\f", style.font);
  }
  if (style.halfPoints != m_current.halfPoints) {
    m_text.Word("\\fs", style.halfPoints);
  }
  if (style.bold != m_current.bold) {
    Toggle("\\b", style.bold);
  }
  if (style.italic != m_current.italic) {
    Toggle("\\i", style.italic);
  }
  Underline(style);
  if (style.strike != m_current.strike) {
    if (m_current.strike != 0) {
      m_text.Word(m_current.strike == 1 ? "\\strike" : "\\striked", 0);
    }
    if (style.strike != 0) {
      m_text.Word(style.strike == 1 ? "\\strike" : "\\striked1");
    }
  }
  if (style.caps != m_current.caps) {
    Toggle("\\caps", style.caps);
  }
  if (style.smallCaps != m_current.smallCaps) {
    Toggle("\\scaps", style.smallCaps);
  }
  Vertical(style);
  if (style.colour != m_current.colour) {
    const bool automatic = style.colour == automaticColour;
    m_text.Word("\\cf", automatic ? m_tables.AutomaticColourNumber() : m_tables.ColourNumber(style.colour));
  }
  Background(style);
  if (style.rightToLeft && !m_current.rightToLeft) {
    m_text.Word("\\rtlch");
  }
  m_current = style;
}

void StyleWriter::Underline(const CharacterStyle& style) {
  if (style.underline == m_current.underline) {
    return;
  }
  // The classic control ends an underline with this word, whatever the line.
  m_text.Word(style.underline == UnderlineKind::None ? "\\ulnone" : Control(WordOf(style.underline)).constData());
}

void StyleWriter::Vertical(const CharacterStyle& style) {
  if (style.vertical == m_current.vertical && style.offset == m_current.offset) {
    return;
  }
  if (m_current.vertical == VerticalKind::Raised || m_current.vertical == VerticalKind::Lowered) {
    m_text.Word(m_current.vertical == VerticalKind::Raised ? "\\up" : "\\dn", 0);
  } else if (m_current.vertical != VerticalKind::Normal) {
    m_text.Word("\\nosupersub");
  }
  switch (style.vertical) {
    case VerticalKind::Super:
      m_text.Word("\\super");
      break;
    case VerticalKind::Sub:
      m_text.Word("\\sub");
      break;
    case VerticalKind::Raised:
      m_text.Word("\\up", style.offset);
      break;
    case VerticalKind::Lowered:
      m_text.Word("\\dn", style.offset);
      break;
    case VerticalKind::Normal:
      break;
  }
}

void StyleWriter::Background(const CharacterStyle& style) {
  const bool same = style.background == m_current.background && style.backgroundKind == m_current.backgroundKind;
  if (same) {
    return;
  }
  const bool otherKind = style.backgroundKind != m_current.backgroundKind || style.background == automaticColour;
  if (m_current.background != automaticColour && otherKind) {
    m_text.Word(Control(WordOf(m_current.backgroundKind)).constData(), 0);
  }
  if (style.background != automaticColour) {
    m_text.Word(Control(WordOf(style.backgroundKind)).constData(), m_tables.ColourNumber(style.background));
  }
}

void StyleWriter::CarriedCharacters(const CharacterStyle& style) {
  if (style.carried == m_current.carried) {
    return;
  }
  const QList<CarriedWord>& wanted = style.carried.Words();
  const bool isLost = std::any_of(m_current.carried.Words().begin(), m_current.carried.Words().end(),
                                  [&](const CarriedWord& word) { return WithHead(wanted, word.head).isEmpty(); });
  if (isLost) {
    Reset();
  }
  const QList<CarriedWord> inForce = m_current.carried.Words();
  for (auto from = wanted.begin(); from != wanted.end();) {
    const auto to = std::find_if(from, wanted.end(), [&](const CarriedWord& word) { return word.head != from->head; });
    const QList<CarriedWord> words(from, to);
    if (words.size() > 1 || words != WithHead(inForce, from->head)) {
      Words(words);
    }
    from = to;
  }
}

void StyleWriter::Paragraph(const ParagraphStyle& style) {
  if (style.rightToLeft) {
    m_text.Word("\\rtlpar");
  }
  if (style.Level() > 0) {
    m_text.Word("\\intbl");
  }
  if (style.Level() > 1) {
    m_text.Word("\\itap", style.Level());
  }
  if (style.pageBreakBefore) {
    m_text.Word("\\pagebb");
  }
  Words(style.carried.Words());
  const auto length = [this](const char* word, int twips) {
    if (twips != 0) {
      m_text.Word(word, twips);
    }
  };
  length("\\fi", style.first);
  length("\\li", style.left);
  length("\\ri", style.right);
  length("\\sb", style.before);
  length("\\sa", style.after);
  length("\\sl", style.lineSpacing);
  if (style.lineMultiple) {
    m_text.Word("\\slmult", 1);
  }
  if (style.alignment != Alignment::Left) {
    m_text.Word(Control(WordOf(style.alignment)).constData());
  }
  for (const TabStop& tab : style.tabs) {
    if (tab.kind != TabKind::Left) {
      m_text.Word(Control(WordOf(tab.kind)).constData());
    }
    if (tab.leader != TabLeader::None) {
      m_text.Word(Control(WordOf(tab.leader)).constData());
    }
    m_text.Word(tab.bar ? "\\tb" : "\\tx", tab.position);
  }
}

void StyleWriter::Words(const QList<CarriedWord>& words) {
  for (const CarriedWord& word : words) {
    const Keyword& keyword = KeywordOf(word.word);
    const QByteArray control = '\\' + QByteArray(keyword.name.data(), static_cast<qsizetype>(keyword.name.size()));
    if (!word.hasParameter) {
      m_text.Word(control.constData());
    } else if (!keyword.colour) {
      m_text.Word(control.constData(), word.parameter);
    } else {
      const bool automatic = word.parameter == automaticColour;
      m_text.Word(control.constData(),
                  automatic ? m_tables.AutomaticColourNumber() : m_tables.ColourNumber(word.parameter));
    }
  }
}

}  // namespace rtf
