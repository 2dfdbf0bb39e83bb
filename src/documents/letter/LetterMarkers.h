#pragma once

#include "documents/Export.h"
#include "documents/markers/Markers.h"

#include <QColor>
#include <QList>
#include <QStringList>

class QTextDocument;

namespace documents {

/// A marker in a letter's text, by positions of the document.
struct MarkerPlace {
  int position = 0;
  int length = 0;
  Marker marker = Marker::Title;
};

/// The markers of a letter in their order, and what looks like one and is none, as sentences for the user: bracketed
/// words that nobody knows, brackets that are not closed in their paragraph, markers in hidden text.
struct LetterMarkers {
  QList<MarkerPlace> places;
  QStringList faults;
};

/// Looks for markers in each paragraph's text, whatever its formats; a bookmark or another thing without extent may
/// stand inside.
KELDOCUMENTOS_EXPORT LetterMarkers FindMarkers(const QTextDocument& letter);

/// Puts a value in the place of each marker, in the format of the character behind its bracket. Values are ValueText;
/// brackets in them are not looked at again. Where a value is empty a blank beside it goes, and brackets around it; a
/// line that had a marker and now holds no letter, digit or object goes with its break, but not where it ends a cell or
/// begins a page. `letter` is the document that the places were found in, or an unchanged copy; there are as many
/// values as places. A valid `ground` is the colour behind the values, so that they are seen.
KELDOCUMENTOS_EXPORT void FillMarkers(QTextDocument& letter, const QList<MarkerPlace>& places,
                                      const QStringList& values, const QColor& ground = {});

}  // namespace documents
