#include "documents/rtf/CharacterFormat.h"

#include <QBrush>
#include <QColor>

namespace rtf {

namespace {

using Underlines = QTextCharFormat::UnderlineStyle;

// Source of the kinds: Rich Text Format Specification 1.9.1, "Font (Character) Formatting Properties".
Underlines Shown(UnderlineKind kind) {
  switch (kind) {
    case UnderlineKind::None:
      return Underlines::NoUnderline;
    case UnderlineKind::Dots:
    case UnderlineKind::ThickDots:
      return Underlines::DotLine;
    case UnderlineKind::Dashes:
    case UnderlineKind::ThickDashes:
    case UnderlineKind::LongDashes:
    case UnderlineKind::ThickLongDashes:
      return Underlines::DashUnderline;
    case UnderlineKind::DashDot:
    case UnderlineKind::ThickDashDot:
      return Underlines::DashDotLine;
    case UnderlineKind::DashDotDot:
    case UnderlineKind::ThickDashDotDot:
      return Underlines::DashDotDotLine;
    case UnderlineKind::Wave:
    case UnderlineKind::HeavyWave:
    case UnderlineKind::DoubleWave:
      return Underlines::WaveUnderline;
    default:
      return Underlines::SingleUnderline;
  }
}

UnderlineKind UnderlineOf(const QTextCharFormat& format) {
  const Underlines shown = format.underlineStyle();
  const auto carried = UnderlineKind(format.intProperty(UnderlineProperty));
  if (carried != UnderlineKind::None && Shown(carried) == shown) {
    return carried;
  }
  for (int kind = int(UnderlineKind::Single); kind <= int(UnderlineKind::Wave); ++kind) {
    if (Shown(UnderlineKind(kind)) == shown) {
      return UnderlineKind(kind);
    }
  }
  return shown == Underlines::NoUnderline ? UnderlineKind::None : UnderlineKind::Single;
}

QFont::StyleHint HintOf(const QString& family) {
  if (family == u"roman") {
    return QFont::Serif;
  }
  if (family == u"swiss") {
    return QFont::SansSerif;
  }
  if (family == u"modern") {
    return QFont::TypeWriter;
  }
  return QFont::AnyStyle;
}

int RgbOf(const QBrush& brush) {
  return brush.style() == Qt::NoBrush ? automaticColour : static_cast<int>(brush.color().rgb() & 0xFFFFFF);
}

void SetVertical(QTextCharFormat& format, const CharacterStyle& style) {
  switch (style.vertical) {
    case VerticalKind::Normal:
      format.setVerticalAlignment(QTextCharFormat::AlignNormal);
      return;
    case VerticalKind::Super:
      format.setVerticalAlignment(QTextCharFormat::AlignSuperScript);
      return;
    case VerticalKind::Sub:
      format.setVerticalAlignment(QTextCharFormat::AlignSubScript);
      return;
    case VerticalKind::Raised:
      format.setVerticalAlignment(QTextCharFormat::AlignSuperScript);
      format.setProperty(RaiseProperty, style.offset);
      return;
    case VerticalKind::Lowered:
      format.setVerticalAlignment(QTextCharFormat::AlignSubScript);
      format.setProperty(RaiseProperty, -style.offset);
      return;
  }
}

void GetVertical(const QTextCharFormat& format, CharacterStyle& style) {
  const int raise = format.intProperty(RaiseProperty);
  if (format.verticalAlignment() == QTextCharFormat::AlignSuperScript) {
    style.vertical = raise > 0 ? VerticalKind::Raised : VerticalKind::Super;
  } else if (format.verticalAlignment() == QTextCharFormat::AlignSubScript) {
    style.vertical = raise < 0 ? VerticalKind::Lowered : VerticalKind::Sub;
  }
  if (style.vertical == VerticalKind::Raised || style.vertical == VerticalKind::Lowered) {
    style.offset = std::abs(raise);
  }
}

Font FontOf(const QTextCharFormat& format, const QFont& fallback) {
  const QStringList families = format.fontFamilies().toStringList();
  const QString family = families.isEmpty() ? fallback.family() : families.first();
  const Font carried = Font::FromDescription(format.stringProperty(FontProperty));
  if (carried.name == family) {
    return carried;
  }
  return {.charset = 0, .codePage = 1252, .name = family};
}

int HalfPointsOf(const QTextCharFormat& format, const QFont& fallback) {
  double points = format.fontPointSize();
  if (points <= 0 && format.hasProperty(QTextFormat::FontPixelSize)) {
    points = format.intProperty(QTextFormat::FontPixelSize) * 0.75;
  }
  if (points <= 0) {
    points = fallback.pointSizeF() > 0 ? fallback.pointSizeF() : fallback.pixelSize() * 0.75;
  }
  return qBound(1, qRound(points * 2), largestHalfPoints);
}

}  // namespace

QTextCharFormat ToCharacterFormat(const CharacterStyle& style, const Font& font) {
  QTextCharFormat format;
  format.setFontFamilies({font.name});
  format.setProperty(FontProperty, font.Description());
  if (const QFont::StyleHint hint = HintOf(font.family); hint != QFont::AnyStyle) {
    format.setFontStyleHint(hint);
  }
  format.setFontPointSize(style.halfPoints / 2.0);
  format.setFontWeight(style.bold ? QFont::Bold : QFont::Normal);
  format.setFontItalic(style.italic);
  format.setFontStrikeOut(style.strike > 0);
  if (style.strike > 1) {
    format.setProperty(StrikeProperty, int(style.strike));
  }
  format.setUnderlineStyle(Shown(style.underline));
  if (style.underline > UnderlineKind::Wave) {
    format.setProperty(UnderlineProperty, int(style.underline));
  }
  if (style.caps || style.smallCaps) {
    format.setFontCapitalization(style.caps ? QFont::AllUppercase : QFont::SmallCaps);
  }
  if (style.caps && style.smallCaps) {
    format.setProperty(SmallCapsProperty, true);
  }
  SetVertical(format, style);
  if (style.colour != automaticColour) {
    format.setForeground(QColor::fromRgb(static_cast<QRgb>(style.colour)));
  }
  if (style.background != automaticColour) {
    format.setBackground(QColor::fromRgb(static_cast<QRgb>(style.background)));
    format.setProperty(BackgroundProperty, (int(style.backgroundKind) << 24) | style.background);
  }
  if (style.rightToLeft) {
    format.setProperty(RunDirectionProperty, 1);
  }
  if (!style.carried.IsEmpty()) {
    format.setProperty(CharacterWordsProperty, ToText(style.carried.Words()));
  }
  return format;
}

CharacterStyle FromCharacterFormat(const QTextCharFormat& format, const QFont& fallback, Font& font) {
  font = FontOf(format, fallback);
  CharacterStyle style;
  style.halfPoints = HalfPointsOf(format, fallback);
  const bool hasWeight = format.hasProperty(QTextFormat::FontWeight);
  style.bold = (hasWeight ? format.fontWeight() : fallback.weight()) >= QFont::DemiBold;
  style.italic = format.hasProperty(QTextFormat::FontItalic) ? format.fontItalic() : fallback.italic();
  if (format.fontStrikeOut()) {
    style.strike = static_cast<std::uint8_t>(qBound(1, format.intProperty(StrikeProperty), 2));
  }
  style.underline = UnderlineOf(format);
  style.caps = format.fontCapitalization() == QFont::AllUppercase;
  style.smallCaps =
      style.caps ? format.boolProperty(SmallCapsProperty) : format.fontCapitalization() == QFont::SmallCaps;
  GetVertical(format, style);
  style.colour = RgbOf(format.foreground());
  style.background = RgbOf(format.background());
  const int carried = format.intProperty(BackgroundProperty);
  if (style.background != automaticColour && (carried & 0xFFFFFF) == style.background) {
    style.backgroundKind = BackgroundKind(carried >> 24);
  }
  style.rightToLeft = format.intProperty(RunDirectionProperty) == 1;
  for (const CarriedWord& word : WordsFromText(format.stringProperty(CharacterWordsProperty))) {
    style.carried.Append(word);
  }
  return style;
}

}  // namespace rtf
