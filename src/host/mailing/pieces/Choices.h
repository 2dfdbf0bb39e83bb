#pragma once

#include "documents/labels/LabelPainter.h"
#include "documents/labels/Sheet.h"
#include "host/mailing/selection/Conditions.h"
#include "host/mailing/selection/SelectionStore.h"

#include <QList>
#include <QString>

#include <array>
#include <optional>

namespace host {

/// A record to choose.
struct Choice {
  int id = 0;
  QString name;
};

/// A sheet of postal labels.
struct SheetChoice : Choice {
  std::optional<documents::Sheet> sheet;  ///< Nothing where its measures are of no use.
  int lastLabel = 0;                      ///< Where the last print ended; 0 where nobody knows.
  documents::LabelFont font;
};

/// What a mailing can be made of, each list by its names.
struct Choices {
  QList<StoredSelection> selections;
  QList<Choice> letters;
  QList<SheetChoice> sheets;
  /// Of each condition, by its number.
  std::array<QList<Choice>, conditionCount> records;
};

Choices ReadChoices(adodb::Connection& connection, int userId);

/// The font that the labels of a sheet are printed in.
documents::LabelFont ReadLabelFont(adodb::Connection& connection, int sheet);
/// Keeps it for everybody.
void WriteLabelFont(adodb::Connection& connection, int sheet, const documents::LabelFont& font);

}  // namespace host
