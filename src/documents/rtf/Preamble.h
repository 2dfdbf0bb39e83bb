#pragma once

#include "documents/rtf/CodePages.h"
#include "documents/rtf/WordList.h"

#include <QByteArray>
#include <QMetaType>

#include <memory>

class QTextDocument;

namespace rtf {

/// What stands in front of the text and holds for all of it. Groups are kept as they are, braces included; their
/// numbers of fonts, colours and lists stay valid because the tables are only ever added to.
struct PreambleData {
  int codePage = westernCodePage;
  int defaultFont = 0;
  int defaultTab = 720;
  QByteArray fontTables;
  QByteArray colourTables;
  QByteArray listTables;
  QByteArray groups;             ///< Of the document, `listTables` not among them.
  WordList words;                ///< Of the document.
  WordList sectionWords;         ///< Of the first section.
  bool sectionDefaults = false;  ///< Whether it begins with `\sectd`.
  QByteArray sectionGroups;

  bool operator==(const PreambleData&) const = default;
};

/// Of a letter that is new: Spanish.
PreambleData NewPreamble();

/// Shared, because it goes with the document's root frame and into its clones.
struct Preamble {
  std::shared_ptr<const PreambleData> data = std::make_shared<const PreambleData>();

  bool operator==(const Preamble& other) const { return data == other.data || *data == *other.data; }
};

/// What a document's root frame carries, or a new letter's.
Preamble PreambleOf(const QTextDocument& document);
void SetPreamble(QTextDocument& document, PreambleData data);

}  // namespace rtf

Q_DECLARE_METATYPE(rtf::Preamble)
