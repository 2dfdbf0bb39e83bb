#include "documents/rtf/TextEncoder.h"

#include "documents/rtf/CodePages.h"

namespace rtf {

void RtfText::Word(const char* word) {
  m_bytes += word;
  m_afterWord = true;
}

void RtfText::Word(const char* word, int parameter) {
  m_bytes += word;
  m_bytes += QByteArray::number(parameter);
  m_afterWord = true;
}

void RtfText::Raw(const QByteArray& bytes) {
  m_bytes += bytes;
  m_afterWord = m_afterWord && bytes.isEmpty();
}

void RtfText::Raw(const char* bytes) {
  m_bytes += bytes;
  m_afterWord = false;
}

void RtfText::Text(QStringView text, int codePage) {
  for (const QChar character : text) {
    Character(character.unicode(), codePage);
  }
}

void RtfText::Character(char16_t character, int codePage) {
  switch (character) {
    case u'\t':
      Word("\\tab");
      return;
    case 0x2028:
      Word("\\line");
      return;
    case 0x00A0:
      Raw("\\~");
      return;
    case 0x00AD:
      Raw("\\-");
      return;
    case 0x2011:
      Raw("\\_");
      return;
    default:
      break;
  }
  const bool symbols = codePage == symbolCodePage;
  if (character >= 0x20 && character < 0x7F && (!symbols || character == u' ')) {
    Plain(static_cast<char>(character));
  } else if (symbols && character > 0xF020 && character <= 0xF0FF) {
    Hex(character - 0xF000);
  } else if (const int byte = codePage == westernCodePage && character > 0x7F ? WesternByte(character) : -1;
             byte >= 0) {
    Hex(byte);
  } else {
    m_bytes += "\\u";
    m_bytes += QByteArray::number(static_cast<qint16>(character));
    m_bytes += '?';
    m_afterWord = false;
  }
}

void RtfText::Plain(char character) {
  if (character == '{' || character == '}' || character == '\\') {
    m_bytes += '\\';
  } else if (m_afterWord) {
    // A semicolon needs none by the rules; the classic control writes one, as some readers take it for a list's end.
    const bool joins = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
                       (character >= '0' && character <= '9') || character == ' ' || character == '-' ||
                       character == ';';
    if (joins) {
      m_bytes += ' ';
    }
  }
  m_bytes += character;
  m_afterWord = false;
}

void RtfText::Hex(int byte) {
  static constexpr char digits[] = "0123456789abcdef";
  m_bytes += "\\'";
  m_bytes += digits[byte >> 4];
  m_bytes += digits[byte & 15];
  m_afterWord = false;
}

}  // namespace rtf
