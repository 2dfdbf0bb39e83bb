#include "documents/letter/LetterStrips.h"

#include "documents/rtf/GroupDocument.h"
#include "documents/rtf/Preamble.h"
#include "documents/rtf/Properties.h"
#include "documents/rtf/Tokenizer.h"

#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace documents {

namespace {

constexpr std::string_view words[] = {"header", "headerf", "headerl", "headerr",
                                      "footer", "footerf", "footerl", "footerr"};
// No number of a page is larger.
constexpr int largestNumber = 32767;

int Parameter(const rtf::WordList& list, std::string_view name, int otherwise) {
  const QList<rtf::CarriedWord>& all = list.Words();
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const auto& word) { return rtf::KeywordOf(word.word).name == name; });
  return found == all.end() || !found->hasParameter ? otherwise : std::clamp(found->parameter, 0, largestNumber);
}

bool HasStripsOfItsOwn(const QTextBlock& block) {
  return !block.blockFormat().property(rtf::SectionProperty).value<rtf::Piece>().Bytes().isEmpty();
}

}  // namespace

LetterStrips::LetterStrips(const QTextDocument& letter, const Margins& margins, const Paper& paper)
    : m_margins(margins), m_paper(paper) {
  const rtf::Preamble preamble = rtf::PreambleOf(letter);
  const rtf::WordList& section = preamble.data->sectionWords;
  m_firstDiffers = section.Contains("titlepg");
  m_sidesDiffer = preamble.data->words.Contains("facingp");
  m_headerPlace = {Parameter(section, "headery", m_headerPlace.count)};
  m_footerPlace = {Parameter(section, "footery", m_footerPlace.count)};
  m_firstNumber = Parameter(section, "pgnstarts", Parameter(preamble.data->words, "pgnstart", 1));
  ReadGroups(letter);
  for (QTextBlock block = letter.begin(); block.isValid() && !m_othersFollow; block = block.next()) {
    m_othersFollow = HasStripsOfItsOwn(block);
  }
}

LetterStrips::~LetterStrips() = default;

void LetterStrips::ReadGroups(const QTextDocument& letter) {
  const rtf::Preamble preamble = rtf::PreambleOf(letter);
  const QByteArray& groups = preamble.data->sectionGroups;
  const int width = ToHalfPoints(TextWidth(m_margins, m_paper));
  rtf::Tokenizer tokenizer({groups.constData(), static_cast<std::size_t>(groups.size())});
  for (rtf::Token token = tokenizer.Next(); token.kind != rtf::TokenKind::End; token = tokenizer.Next()) {
    if (token.kind != rtf::TokenKind::GroupStart) {
      continue;
    }
    const rtf::Token word = tokenizer.Next();
    if (word.kind == rtf::TokenKind::GroupEnd) {
      continue;
    }
    const auto kind = std::find(std::begin(words), std::end(words), word.text) - std::begin(words);
    const auto contents = static_cast<qsizetype>(word.end);
    tokenizer.SkipGroup();
    if (word.kind == rtf::TokenKind::Word && kind < kinds) {
      const QByteArray text = groups.mid(contents, static_cast<qsizetype>(tokenizer.Position()) - contents);
      m_strips[kind] = std::make_unique<SectionStrip>(rtf::AsLetter(text, *preamble.data), letter, width);
    }
  }
}

bool LetterStrips::IsEmpty() const {
  return std::all_of(m_strips.begin(), m_strips.end(), [](const auto& strip) { return strip == nullptr; });
}

void LetterStrips::SetMargins(const Margins& margins) {
  m_margins = margins;
  for (const auto& strip : m_strips) {
    if (strip != nullptr) {
      strip->SetWidth(ToHalfPoints(TextWidth(m_margins, m_paper)));
    }
  }
}

SectionStrip* LetterStrips::StripOf(int page, bool footer) const {
  const int all = footer ? Footer : Header;
  if (m_firstDiffers && page == 0) {
    return m_strips[all + HeaderFirst].get();
  }
  const bool isLeft = (m_firstNumber + page) % 2 == 0;
  SectionStrip* side = m_strips[all + (isLeft && m_sidesDiffer ? HeaderLeft : HeaderRight)].get();
  SectionStrip* both = m_strips[all].get();
  return m_sidesDiffer ? (side != nullptr ? side : both) : (both != nullptr ? both : side);
}

double LetterStrips::HeaderRoom() const {
  return std::max(0, ToHalfPoints(FromCentimetres(m_margins.top)) - ToHalfPoints(m_headerPlace));
}

double LetterStrips::FooterRoom() const {
  return std::max(0, ToHalfPoints(FromCentimetres(m_margins.bottom)) - ToHalfPoints(m_footerPlace));
}

void LetterStrips::Paint(QPainter& painter, int page, int pages, double height) const {
  const double left = ToHalfPoints(FromCentimetres(m_margins.left));
  painter.save();
  if (SectionStrip* header = StripOf(page, false)) {
    painter.translate(left, ToHalfPoints(m_headerPlace));
    header->Paint(painter, m_firstNumber + page, pages, HeaderRoom());
    painter.translate(-left, -ToHalfPoints(m_headerPlace));
  }
  if (SectionStrip* footer = StripOf(page, true)) {
    const double top = height - ToHalfPoints(m_footerPlace) - std::min(footer->Height(), FooterRoom());
    painter.translate(left, top);
    footer->Paint(painter, m_firstNumber + page, pages, FooterRoom());
  }
  painter.restore();
}

QStringList LetterStrips::MissingFonts() const {
  QStringList fonts;
  for (const auto& strip : m_strips) {
    fonts += strip != nullptr ? strip->MissingFonts() : QStringList();
  }
  fonts.removeDuplicates();
  return fonts;
}

QStringList LetterStrips::Problems() const {
  // Half a line of the smallest text may be lacking without a letter being cut.
  constexpr double tolerance = 4;
  QStringList problems;
  const auto isTaller = [this](int first, int last, double room) {
    return std::any_of(m_strips.begin() + first, m_strips.begin() + last + 1,
                       [&](const auto& strip) { return strip != nullptr && strip->Height() > room + tolerance; });
  };
  if (isTaller(Header, HeaderRight, HeaderRoom())) {
    problems.append(
        u"El encabezado de las páginas no cabe en el margen superior y se imprimirá cortado. Aumente el "
        "margen superior de la carta."_s);
  }
  if (isTaller(Footer, FooterRight, FooterRoom())) {
    problems.append(
        u"El pie de las páginas no cabe en el margen inferior y se imprimirá cortado. Aumente el margen "
        "inferior de la carta."_s);
  }
  const auto any = [this](const auto& is) {
    return std::any_of(m_strips.begin(), m_strips.end(), [&](const auto& strip) { return strip && is(*strip); });
  };
  if (any([](const SectionStrip& strip) { return strip.IsTooLong(); })) {
    problems.append(
        u"Un encabezado o pie de página es demasiado largo y no se imprimirá. Acórtelo en el programa con el "
        "que se hizo la carta."_s);
  }
  const double paper = ToHalfPoints(FromCentimetres(InCentimetres(m_paper.width) - m_margins.left));
  if (any([&](const SectionStrip& strip) { return strip.Width() > paper; })) {
    problems.append(
        u"Un encabezado o pie de página es más ancho que el papel y se imprimirá cortado. Estréchelo en el "
        "programa con el que se hizo la carta."_s);
  }
  if (any([](const SectionStrip& strip) { return strip.HidesObjects(); })) {
    problems.append(
        u"Un encabezado o pie de página tiene dibujos, objetos o imágenes que no se pueden mostrar y no se "
        "imprimirán."_s);
  }
  if (const QStringList fonts = MissingFonts(); !fonts.isEmpty()) {
    problems.append(
        u"Los encabezados o pies de página se imprimirán con otra letra: en este ordenador no está %1."_s.arg(
            fonts.join(u", "_s)));
  }
  if (m_othersFollow) {
    problems.append(
        u"La carta tiene encabezados o pies distintos en otra sección. Todas las páginas llevarán los de la "
        "primera."_s);
  }
  return problems;
}

}  // namespace documents
