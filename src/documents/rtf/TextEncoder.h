#pragma once

#include <QByteArray>
#include <QString>

namespace rtf {

/// RTF text as it is written. Takes care of the space that a control word needs in front of text that could belong to
/// it, and of nothing else: what is put in is written as it is.
class RtfText {
 public:
  const QByteArray& Bytes() const { return m_bytes; }
  QByteArray& Bytes() { return m_bytes; }

  /// A control word with or without a parameter, "\\par" or "\\fs".
  void Word(const char* word);
  void Word(const char* word, int parameter);
  /// Braces, groups that are kept as they are, line ends.
  void Raw(const QByteArray& bytes);
  void Raw(const char* bytes);
  void OpenGroup() { Raw("{"); }
  void CloseGroup() { Raw("}"); }

  /// Text in a font of that code page: ASCII as it is, characters of code page 1252 and of symbol fonts as bytes if
  /// that is the font's page, everything else as a Unicode escape with `?` as its fallback.
  void Text(QStringView text, int codePage);

 private:
  void Character(char16_t character, int codePage);
  void Plain(char character);
  void Hex(int byte);

  QByteArray m_bytes;
  bool m_afterWord = false;
};

}  // namespace rtf
