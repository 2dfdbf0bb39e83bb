#include "documents/rtf/CodePages.h"

#include "platform/text/Windows1252.h"

#include <QByteArray>
#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <utility>

namespace rtf {

namespace {

using UpperHalf = std::array<char16_t, 128>;

// A converter per code page, made when it is first needed; null for a page that this system does not know.
QStringDecoder* DecoderOf(int codePage) {
  static constexpr std::pair<int, const char*> names[] = {
      {437, "IBM437"},        {708, "ASMO-708"},         {720, "IBM720"},        {850, "IBM850"},
      {852, "IBM852"},        {860, "IBM860"},           {862, "IBM862"},        {863, "IBM863"},
      {864, "IBM864"},        {865, "IBM865"},           {866, "IBM866"},        {874, "windows-874"},
      {932, "windows-932"},   {936, "windows-936"},      {949, "windows-949"},   {950, "windows-950"},
      {1250, "windows-1250"}, {1251, "windows-1251"},    {1253, "windows-1253"}, {1254, "windows-1254"},
      {1255, "windows-1255"}, {1256, "windows-1256"},    {1257, "windows-1257"}, {1258, "windows-1258"},
      {10000, "macintosh"},   {10001, "windows-932"},    {10002, "windows-950"}, {10003, "windows-949"},
      {10006, "x-mac-greek"}, {10007, "x-mac-cyrillic"}, {10008, "windows-936"}, {10021, "windows-874"},
      {10029, "x-mac-ce"},    {10081, "x-mac-turkish"},  {54936, "gb18030"},     {65001, "UTF-8"}};
  static std::map<int, std::unique_ptr<QStringDecoder>> decoders;
  const auto known = decoders.find(codePage);
  if (known != decoders.end()) {
    return known->second.get();
  }
  std::unique_ptr<QStringDecoder> decoder;
  for (const auto& [page, name] : names) {
    if (page == codePage) {
      decoder = std::make_unique<QStringDecoder>(name);
    }
  }
  if (decoder != nullptr && !decoder->isValid()) {
    decoder.reset();
  }
  return decoders.emplace(codePage, std::move(decoder)).first->second.get();
}

QString Converted(QStringDecoder& decoder, std::string_view bytes) {
  decoder.resetState();
  // The bytes behind the text end a character that is cut short.
  QString text = decoder.decode(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
  if (decoder.hasError() && text.isEmpty()) {
    text = QChar(QChar::ReplacementCharacter);
  }
  return text;
}

const UpperHalf& UpperHalfOf(int codePage) {
  static std::map<int, UpperHalf> halves;
  const auto known = halves.find(codePage);
  if (known != halves.end()) {
    return known->second;
  }
  UpperHalf half = texts::windows1252;
  if (QStringDecoder* decoder = DecoderOf(codePage)) {
    for (std::size_t i = 0; i < half.size(); ++i) {
      const char byte = static_cast<char>(0x80 + i);
      const QString character = Converted(*decoder, {&byte, 1});
      half[i] = character.size() == 1 ? character.front().unicode() : char16_t(QChar::ReplacementCharacter);
    }
  }
  return halves.emplace(codePage, half).first->second;
}

bool IsControl(char16_t character) {
  return character < 0x20 && character != u'\t';
}

}  // namespace

bool IsMultiByte(int codePage) {
  switch (codePage) {
    case 932:
    case 936:
    case 949:
    case 950:
    case 10001:
    case 10002:
    case 10003:
    case 10008:
    case 54936:
    case 65001:
      return true;
    default:
      return false;
  }
}

int CodePageOfCharset(int charset) {
  static constexpr std::pair<int, int> pages[] = {
      {0, 1252},   {2, symbolCodePage}, {77, 10000}, {78, 932},   {79, 949},   {80, 936},   {81, 950},
      {83, 1255},  {84, 1256},          {85, 10006}, {86, 10081}, {87, 874},   {88, 10029}, {89, 10007},
      {128, 932},  {129, 949},          {130, 949},  {134, 936},  {136, 950},  {161, 1253}, {162, 1254},
      {163, 1258}, {177, 1255},         {178, 1256}, {179, 1256}, {180, 1256}, {181, 1255}, {186, 1257},
      {204, 1251}, {222, 874},          {238, 1250}, {254, 437},  {255, 850}};
  for (const auto& [number, page] : pages) {
    if (number == charset) {
      return page;
    }
  }
  return 0;
}

void Decode(QString& text, std::string_view bytes, int codePage) {
  if (IsMultiByte(codePage)) {
    const bool ascii = std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
    if (QStringDecoder* decoder = ascii ? nullptr : DecoderOf(codePage)) {
      QString converted = Converted(*decoder, bytes);
      converted.removeIf([](QChar c) { return IsControl(c.unicode()); });
      text += converted;
      return;
    }
  }
  const UpperHalf& half =
      codePage == westernCodePage || codePage == symbolCodePage ? texts::windows1252 : UpperHalfOf(codePage);
  const qsizetype start = text.size();
  text.resize(start + static_cast<qsizetype>(bytes.size()));
  QChar* out = text.data() + start;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (IsControl(byte)) {
      continue;
    }
    if (codePage == symbolCodePage && byte > 0x20) {
      *out++ = QChar(static_cast<char16_t>(0xF000 + byte));
    } else {
      *out++ = QChar(byte < 0x80 ? static_cast<char16_t>(byte) : half[byte - 0x80]);
    }
  }
  text.resize(out - text.constData());
}

int WesternByte(char16_t character) {
  if (character < 0x80) {
    return character;
  }
  // A free byte's control character is written as a Unicode escape, as no other reader agrees on it.
  if (character < 0xA0) {
    return -1;
  }
  if (character < 0x100) {
    return character;
  }
  const auto found = std::find(texts::windows1252.begin(), texts::windows1252.end(), character);
  return found == texts::windows1252.end() ? -1 : static_cast<int>(0x80 + (found - texts::windows1252.begin()));
}

}  // namespace rtf
