#pragma once

#include "reader/ZipFile.h"

#include <QByteArrayList>
#include <QList>

#include <optional>
#include <vector>

namespace reader {

/// What of a workbook stands outside its sheets. Each is nothing where the part is damaged or hostile.

struct WorkbookSheet {
  QByteArray name;
  QByteArray part;  ///< "xl/worksheets/sheet1.xml"
};
struct Workbook {
  QList<WorkbookSheet> sheets;
  bool from1904 = false;  ///< Days are counted from 1904-01-01.
};
std::optional<Workbook> ReadWorkbook(const ZipFile& file);

/// A text of a workbook, whose "_x000D_" stands for the character of that number (Office Open XML, ST_Xstring).
QByteArray PlainText(const QString& text);

/// The texts that cells name by their number; empty where there is no such part.
std::optional<QByteArrayList> ReadSharedTexts(const ZipFile& file);

/// For each style of cells whether it shows numbers as dates, which is all that makes a date of a number.
std::optional<std::vector<bool>> ReadDateStyles(const ZipFile& file);

}  // namespace reader
