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

/// A sheet of labels.
struct SheetChoice : Choice {
  std::optional<documents::Sheet> sheet;  ///< Nothing where its measures are of no use.
  bool isForDisks = false;                ///< Not for people, but for bank disks.
  int start = 1;                          ///< The label behind the last one that was printed.
  documents::LabelFont font;
};

/// What a mailing can be made of, each list by its names.
struct Choices {
  QList<StoredSelection> selections;
  QList<Choice> letters;
  QList<Choice> letterheads;
  QList<SheetChoice> sheets;
  int lastSheet = 0;  ///< The one that was used last; 0 for none.
  /// Of each condition, by its number.
  std::array<QList<Choice>, conditionCount> records;
};

Choices ReadChoices(adodb::Connection& connection, int userId);

}  // namespace host
