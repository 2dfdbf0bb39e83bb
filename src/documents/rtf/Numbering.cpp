#include "documents/rtf/Numbering.h"

#include "documents/rtf/CodePages.h"
#include "documents/rtf/Properties.h"
#include "documents/rtf/TextEncoder.h"
#include "documents/rtf/Tokenizer.h"

#include <algorithm>
#include <string>

namespace rtf {

namespace {

constexpr std::pair<std::string_view, Numbering::Kind> numberingWords[] = {
    {"pnlvlblt", Numbering::Kind::Bullet},    {"pndec", Numbering::Kind::Decimal},
    {"pncard", Numbering::Kind::Decimal},     {"pnord", Numbering::Kind::Decimal},
    {"pnordt", Numbering::Kind::Decimal},     {"pnucrm", Numbering::Kind::UpperRoman},
    {"pnlcrm", Numbering::Kind::LowerRoman},  {"pnucltr", Numbering::Kind::UpperLetter},
    {"pnlcltr", Numbering::Kind::LowerLetter}};

// Source: Rich Text Format Specification 1.9.1, "List Levels", `\levelnfcN`.
Numbering::Kind KindOfNumberFormat(int number) {
  switch (number) {
    case 1:
      return Numbering::Kind::UpperRoman;
    case 2:
      return Numbering::Kind::LowerRoman;
    case 3:
      return Numbering::Kind::UpperLetter;
    case 4:
      return Numbering::Kind::LowerLetter;
    case 23:
      return Numbering::Kind::Bullet;
    case 255:
      return Numbering::Kind::None;
    default:
      return Numbering::Kind::Decimal;
  }
}

QString Letters(int number) {
  QString text;
  for (; number > 0; number = (number - 1) / 26) {
    text.prepend(QChar(u'a' + (number - 1) % 26));
  }
  return text;
}

QString Roman(int number) {
  static constexpr std::pair<int, const char*> parts[] = {{1000, "m"}, {900, "cm"}, {500, "d"}, {400, "cd"}, {100, "c"},
                                                          {90, "xc"},  {50, "l"},   {40, "xl"}, {10, "x"},   {9, "ix"},
                                                          {5, "v"},    {4, "iv"},   {1, "i"}};
  if (number < 1 || number > 4999) {
    return QString::number(number);
  }
  QString text;
  for (const auto& [value, digits] : parts) {
    for (; number >= value; number -= value) {
      text += QLatin1StringView(digits);
    }
  }
  return text;
}

/// A level's text: its length, then characters with the numbers of levels as control characters among them.
void SetLevelText(Numbering& level, const std::string& bytes) {
  const std::string text = bytes.substr(std::min<std::size_t>(1, bytes.size()), bytes.find(';') - 1);
  const auto isPlace = [](char c) { return c >= 0 && c < 9; };
  const auto first = std::find_if(text.begin(), text.end(), isPlace);
  const auto last = std::find_if(text.rbegin(), text.rend(), isPlace).base();
  Decode(level.before, {text.data(), static_cast<std::size_t>(first - text.begin())}, westernCodePage);
  if (first != text.end()) {
    Decode(level.after, {&*text.begin() + (last - text.begin()), static_cast<std::size_t>(text.end() - last)},
           westernCodePage);
  }
}

/// Calls `visit(token, depth)` for the tokens of a group.
template <typename Visit>
void Walk(std::string_view group, const Visit& visit) {
  Tokenizer tokenizer(group);
  int depth = 0;
  for (Token token = tokenizer.Next(); token.kind != TokenKind::End; token = tokenizer.Next()) {
    depth += token.kind == TokenKind::GroupStart ? 1 : 0;
    visit(token, depth);
    depth -= token.kind == TokenKind::GroupEnd ? 1 : 0;
  }
}

}  // namespace

QByteArray NumberingGroup(const Numbering& numbering, int font) {
  RtfText text;
  text.Raw("{\\*\\pn");
  const bool bullet = numbering.kind == Numbering::Kind::Bullet;
  if (!bullet) {
    text.Raw("\\pnlvlbody");
  }
  for (const auto& [word, kind] : numberingWords) {
    if (kind == numbering.kind) {
      text.Raw('\\' + QByteArray(word.data(), static_cast<qsizetype>(word.size())));
      break;
    }
  }
  if (font >= 0) {
    text.Word("\\pnf", font);
  }
  text.Word("\\pnindent", 0);
  if (!bullet) {
    text.Word("\\pnstart", numbering.start);
  }
  const auto add = [&text](const char* word, const QString& characters) {
    if (!characters.isEmpty()) {
      text.OpenGroup();
      text.Word(word);
      text.Text(characters, westernCodePage);
      text.CloseGroup();
    }
  };
  add("\\pntxtb", numbering.before);
  add("\\pntxta", numbering.after);
  text.CloseGroup();
  return text.Bytes();
}

Numbering ReadNumbering(std::string_view group, int codePage) {
  Numbering numbering;
  QString* text = nullptr;
  int textDepth = 0;
  std::size_t skip = 0;
  Walk(group, [&](const Token& token, int depth) {
    if (token.kind == TokenKind::Word) {
      for (const auto& [word, kind] : numberingWords) {
        if (token.text == word) {
          numbering.kind = kind;
        }
      }
      if (token.text == "u" && text != nullptr) {
        *text += QChar(static_cast<char16_t>(token.parameter));
        skip = 1;
      } else if (token.text == "pnstart") {
        numbering.start = token.parameter;
      } else if (token.text == "pntxtb" || token.text == "pntxta") {
        text = token.text == "pntxtb" ? &numbering.before : &numbering.after;
        textDepth = depth;
      }
    } else if (token.kind == TokenKind::GroupEnd && depth == textDepth) {
      text = nullptr;
    } else if (text != nullptr && token.kind == TokenKind::Text) {
      Decode(*text, token.text.substr(std::min(skip, token.text.size())), codePage);
      skip = 0;
    } else if (text != nullptr && token.kind == TokenKind::Hex) {
      Decode(*text, {reinterpret_cast<const char*>(&token.byte), 1}, codePage);
    }
  });
  return numbering;
}

std::optional<bool> IsFirstMark(std::string_view group, const Numbering& numbering) {
  QString text;
  Walk(group, [&text](const Token& token, int) {
    if (token.kind == TokenKind::Text) {
      text += QString::fromLatin1(token.text.data(), static_cast<qsizetype>(token.text.size()));
    }
  });
  const bool isNumber = numbering.kind != Numbering::Kind::None && numbering.kind != Numbering::Kind::Bullet &&
                        text.size() > numbering.before.size() + numbering.after.size() &&
                        text.startsWith(numbering.before) && text.endsWith(numbering.after);
  return isNumber
             ? std::optional(text == numbering.before + NumberText(numbering.kind, numbering.start) + numbering.after)
             : std::nullopt;
}

QTextListFormat::Style ListStyle(const Numbering& numbering) {
  switch (numbering.kind) {
    case Numbering::Kind::Decimal:
      return QTextListFormat::ListDecimal;
    case Numbering::Kind::UpperRoman:
      return QTextListFormat::ListUpperRoman;
    case Numbering::Kind::LowerRoman:
      return QTextListFormat::ListLowerRoman;
    case Numbering::Kind::UpperLetter:
      return QTextListFormat::ListUpperAlpha;
    case Numbering::Kind::LowerLetter:
      return QTextListFormat::ListLowerAlpha;
    default:
      break;
  }
  if (numbering.before == u"o") {
    return QTextListFormat::ListCircle;
  }
  return numbering.before == QChar(0xA7) ? QTextListFormat::ListSquare : QTextListFormat::ListDisc;
}

Numbering NumberingOf(const QTextListFormat& format) {
  return {KindOf(format.style()), 1, format.numberPrefix(),
          format.hasProperty(QTextFormat::ListNumberSuffix) ? format.numberSuffix() : QStringLiteral(".")};
}

bool IsOfListTable(const QTextListFormat& format) {
  return format.stringProperty(ListSourceProperty).startsWith(u"\\ls");
}

Numbering::Kind KindOf(QTextListFormat::Style style) {
  switch (style) {
    case QTextListFormat::ListDecimal:
      return Numbering::Kind::Decimal;
    case QTextListFormat::ListUpperRoman:
      return Numbering::Kind::UpperRoman;
    case QTextListFormat::ListLowerRoman:
      return Numbering::Kind::LowerRoman;
    case QTextListFormat::ListUpperAlpha:
      return Numbering::Kind::UpperLetter;
    case QTextListFormat::ListLowerAlpha:
      return Numbering::Kind::LowerLetter;
    default:
      return Numbering::Kind::Bullet;
  }
}

QString NumberText(Numbering::Kind kind, int index) {
  switch (kind) {
    case Numbering::Kind::UpperRoman:
      return Roman(index).toUpper();
    case Numbering::Kind::LowerRoman:
      return Roman(index);
    case Numbering::Kind::UpperLetter:
      return Letters(index).toUpper();
    case Numbering::Kind::LowerLetter:
      return Letters(index);
    default:
      return QString::number(index);
  }
}

void ListTable::AddLists(std::string_view group) {
  QList<Numbering> levels;
  std::string text;
  int textDepth = 0;
  Walk(group, [&](const Token& token, int depth) {
    if (token.kind == TokenKind::Word) {
      if (token.text == "list") {
        levels.clear();
        textDepth = 0;
      } else if (token.text == "listlevel" && levels.size() < 9) {
        levels.append(Numbering{});
      } else if (token.text == "listid") {
        if (!m_lists.contains(token.parameter)) {
          m_lists.insert(token.parameter, levels);
        }
      } else if (!levels.isEmpty() && (token.text == "levelnfc" || token.text == "levelnfcn")) {
        levels.last().kind = KindOfNumberFormat(token.parameter);
      } else if (!levels.isEmpty() && token.text == "levelstartat") {
        levels.last().start = token.parameter;
      } else if (!levels.isEmpty() && token.text == "leveltext") {
        textDepth = depth;
        text.clear();
      }
    } else if (token.kind == TokenKind::GroupEnd && textDepth != 0 && depth == textDepth) {
      textDepth = 0;
      SetLevelText(levels.last(), text);
    } else if (textDepth != 0 && token.kind == TokenKind::Text) {
      text += token.text;
    } else if (textDepth != 0 && token.kind == TokenKind::Hex) {
      text += static_cast<char>(token.byte);
    }
  });
}

void ListTable::AddOverrides(std::string_view group) {
  int list = 0;
  Walk(group, [&](const Token& token, int /*depth*/) {
    if (token.kind == TokenKind::Word && token.text == "listid") {
      list = token.parameter;
    } else if (token.kind == TokenKind::Word && token.text == "ls" && !m_overrides.contains(token.parameter)) {
      m_overrides.insert(token.parameter, list);
    }
  });
}

Numbering ListTable::At(int listNumber, int level) const {
  const QList<Numbering> levels = m_lists.value(m_overrides.value(listNumber, -1));
  return level >= 0 && level < levels.size() ? levels[level] : Numbering{};
}

}  // namespace rtf
