#include "documents/letter/LetterMarkers.h"

#include "documents/rtf/Properties.h"

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>

#include <vector>

using namespace Qt::StringLiterals;

namespace documents {

namespace {

/// A paragraph's characters without what has no extent, and where they stand in the document.
struct Characters {
  QString text;
  std::vector<int> positions;
};

bool HoldsHiddenMarker(const QTextCharFormat& format) {
  const QByteArray bytes = format.property(rtf::PieceProperty).value<rtf::Piece>().Bytes();
  return bytes.startsWith("{\\v") && bytes.contains('[');
}

Characters CharactersOf(const QTextBlock& block, QStringList& faults) {
  Characters characters;
  for (auto at = block.begin(); !at.atEnd(); ++at) {
    const QTextFragment fragment = at.fragment();
    if (fragment.charFormat().objectType() == rtf::pieceObjectType) {
      if (HoldsHiddenMarker(fragment.charFormat())) {
        faults.append(u"Hay corchetes en un texto oculto, que no se rellena."_s);
      }
      continue;
    }
    characters.text += fragment.text();
    for (int i = 0; i < fragment.length(); ++i) {
      characters.positions.push_back(fragment.position() + i);
    }
  }
  return characters;
}

void NameOpenBrackets(QStringView between, QStringList& faults) {
  constexpr qsizetype shown = 30;
  for (qsizetype at = between.indexOf(u'['); at >= 0; at = between.indexOf(u'[', at + 1)) {
    faults.append(u"Falta «]» detrás de «%1» en su párrafo."_s.arg(between.mid(at, shown)));
  }
}

void FindIn(const QTextBlock& block, LetterMarkers& found) {
  static const QRegularExpression bracketed(uR"(\[[^\[\]\x{2028}]*\])"_s);
  const Characters characters = CharactersOf(block, found.faults);
  qsizetype end = 0;
  for (auto at = bracketed.globalMatch(characters.text); at.hasNext();) {
    const QRegularExpressionMatch match = at.next();
    NameOpenBrackets(QStringView(characters.text).mid(end, match.capturedStart() - end), found.faults);
    end = match.capturedEnd();
    if (const std::optional<Marker> marker = MarkerOf(match.capturedView())) {
      const int first = characters.positions[static_cast<std::size_t>(match.capturedStart())];
      const int last = characters.positions[static_cast<std::size_t>(end - 1)];
      found.places.append({first, last + 1 - first, *marker});
    } else {
      found.faults.append(u"«%1» no es ningún campo."_s.arg(match.captured()));
    }
  }
  NameOpenBrackets(QStringView(characters.text).mid(end), found.faults);
}

}  // namespace

LetterMarkers FindMarkers(const QTextDocument& letter) {
  LetterMarkers found;
  for (QTextBlock block = letter.begin(); block.isValid(); block = block.next()) {
    FindIn(block, found);
  }
  found.faults.removeDuplicates();
  return found;
}

}  // namespace documents
