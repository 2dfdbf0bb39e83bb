#pragma once

#include <QList>
#include <QString>

class QWidget;

namespace host {

/// A kind of file that a list can become.
struct ListFileKind {
  QString title;  ///< With its mnemonic.
  QString suffix;
  QString filter;  ///< For a box of files.
  QString advice;  ///< What it is good for, a sentence or two.
};

/// A spreadsheet, a list of texts, a PDF.
const QList<ListFileKind>& ListFileKinds();

/// Asks where a list of that title is to be written, in the folder of the last time; empty where the user gives up. A
/// file that is there is asked about.
QString AskForListFile(QWidget& parent, const QString& title, const ListFileKind& kind);

}  // namespace host
