#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>
#include <span>

namespace moving {

/// A file of tables, written row by row, which appears under its name when it is whole; without Finish nothing is left
/// of it. Errors: 5 with a Spanish text for a file that can't be written, more rows than the kind of file takes, or
/// what was asked for in the wrong order.
class TableWriter {
 public:
  TableWriter() = default;
  TableWriter(const TableWriter&) = delete;
  TableWriter& operator=(const TableWriter&) = delete;
  virtual ~TableWriter();

  /// Begins the next table with its row of headings.
  virtual void Begin(const QString& name, const QStringList& headings) = 0;
  /// A row of values as a Recordset gives them. A text stays a text, whatever it looks like ("0049", "=1"); numbers are
  /// numbers; Booleans «Sí» or «No»; Null and Empty an empty cell.
  virtual void Write(std::span<const QVariant> row) = 0;
  /// Puts the file under its name, in the place of one that is there.
  virtual void Finish() = 0;
};

/// What a file is for.
enum class Purpose {
  Data,  ///< To be brought in again: every text is in it as it is.
  List,  ///< To be looked at in a spreadsheet: no text of a CSV may be taken for a formula.
};

/// The writer for the ending of `path`:
///   - .csv  one table; UTF-8 with its mark, semicolons, decimal commas, CR LF (RFC 4180 for quotes and breaks). For
///           Purpose::List a text that begins with = + - @, tab or CR gets an apostrophe in front; numbers never do.
///   - .ods  a sheet for each table (OpenDocument 1.2); texts are text cells, codes keep their zeros.
/// Raises 5 for another ending, and where no file can be made there.
std::unique_ptr<TableWriter> MakeTableWriter(const QString& path, Purpose purpose);

}  // namespace moving
