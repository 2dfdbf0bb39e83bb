#include "documents/rtf/FontTable.h"

#include "documents/rtf/CodePages.h"
#include "documents/rtf/Tokenizer.h"

#include <string>

namespace rtf {

namespace {

constexpr std::string_view families[] = {"fnil", "froman", "fswiss", "fmodern", "fscript", "fdecor", "ftech", "fbidi"};

constexpr int largestCharset = 255;

}  // namespace

QString FontName(QString name) {
  name.removeIf([](QChar c) { return c == u'\\' || c == u'{' || c == u'}' || c == u';' || c == QChar::SoftHyphen; });
  name.replace(QChar(0x2011), u'-');
  return name.simplified();
}

QString Font::Description() const {
  return family + u',' + QString::number(charset) + u',' + QString::number(codePage) + u',' + name;
}

Font Font::FromDescription(QStringView description) {
  Font font;
  const auto parts = description.split(u',');
  if (parts.size() >= 4) {
    font.family = parts[0].toString();
    font.charset = parts[1].toInt();
    font.codePage = parts[2].toInt();
    font.name = description.mid(parts[0].size() + parts[1].size() + parts[2].size() + 3).toString();
  }
  return font;
}

const Font& NoFont() {
  static const Font font{.name = QStringLiteral("Times New Roman")};
  return font;
}

const Font& FontTable::At(int number) const {
  auto found = m_fonts.constFind(number);
  if (found == m_fonts.constEnd()) {
    found = m_fonts.constFind(m_default);
  }
  return found == m_fonts.constEnd() ? NoFont() : *found;
}

/// One pass over a font table. A name ends at its semicolon; only text outside inner groups belongs to it.
class FontTable::Parser {
 public:
  Parser(FontTable& table, int codePage) : m_table(table), m_documentPage(codePage) {}

  void Read(std::string_view group) {
    Tokenizer tokenizer(group);
    for (Token token = tokenizer.Next(); token.kind != TokenKind::End; token = tokenizer.Next()) {
      switch (token.kind) {
        case TokenKind::GroupStart:
          ++m_depth;
          break;
        case TokenKind::GroupEnd:
          LeaveGroup();
          break;
        case TokenKind::Word:
          Word(token);
          break;
        case TokenKind::Symbol:
          // An inner group that may be ignored: the untagged name, panose numbers, an embedded font.
          if (token.byte == '*' && m_ignored == 0) {
            m_ignored = m_depth;
          }
          break;
        case TokenKind::Hex:
          Bytes({reinterpret_cast<const char*>(&token.byte), 1});
          break;
        case TokenKind::Text:
          Text(token.text);
          break;
        default:
          break;
      }
    }
    Finish();
  }

 private:
  void LeaveGroup() {
    if (m_ignored == m_depth) {
      m_ignored = 0;
    } else if (m_ignored == 0 && m_depth == m_entryDepth) {
      Finish();
    }
    --m_depth;
  }

  void Word(const Token& token) {
    if (m_ignored != 0) {
      return;
    }
    if (token.text == "f" && token.hasParameter && token.parameter >= 0) {
      Finish();
      m_open = true;
      m_entryDepth = m_depth;
      m_number = token.parameter;
    } else if (token.text == "fcharset") {
      m_font.charset = token.parameter >= 0 && token.parameter <= largestCharset ? token.parameter : -1;
    } else if (token.text == "cpg") {
      m_cpg = token.parameter;
    } else if (token.text == "u" && token.hasParameter) {
      FlushBytes();
      m_font.name += QChar(static_cast<char16_t>(token.parameter));
      m_skip = 1;
    } else if (token.text == "falt" || token.text == "fontfile") {
      m_ignored = m_depth;
    } else {
      for (const std::string_view family : families) {
        if (family == token.text) {
          m_font.family = QString::fromLatin1(family.substr(1).data(), static_cast<qsizetype>(family.size() - 1));
        }
      }
    }
  }

  void Text(std::string_view text) {
    const std::size_t end = text.find(';');
    Bytes(text.substr(0, end));
    if (end != std::string_view::npos && m_ignored == 0) {
      Finish();
    }
  }

  void Bytes(std::string_view bytes) {
    if (m_open && m_ignored == 0) {
      const std::size_t skipped = std::min(m_skip, bytes.size());
      m_skip -= skipped;
      m_bytes += bytes.substr(skipped);
    }
  }

  int CodePage() const { return m_cpg > 0 ? m_cpg : CodePageOfCharset(m_font.charset); }

  void FlushBytes() {
    const int page = CodePage();
    Decode(m_font.name, m_bytes, page == 0 || page == symbolCodePage ? m_documentPage : page);
    m_bytes.clear();
  }

  void Finish() {
    if (m_open && (m_table.m_fonts.size() < mostFonts || m_table.m_fonts.contains(m_number))) {
      FlushBytes();
      m_font.codePage = CodePage();
      m_font.name = FontName(m_font.name);
      if (m_font.name.isEmpty()) {
        m_font.name = QStringLiteral("Times New Roman");
      }
      m_table.m_fonts.insert(m_number, m_font);
    }
    m_open = false;
    m_font = {};
    m_bytes.clear();
    m_cpg = 0;
    m_skip = 0;
  }

  FontTable& m_table;
  int m_documentPage;
  int m_depth = 0;
  int m_entryDepth = 0;
  int m_ignored = 0;  ///< The depth of the inner group that is passed over, 0 outside.
  bool m_open = false;
  int m_number = 0;
  int m_cpg = 0;
  std::size_t m_skip = 0;
  Font m_font;
  std::string m_bytes;
};

void FontTable::Add(std::string_view group, int codePage) {
  Parser(*this, codePage).Read(group);
}

}  // namespace rtf
