#pragma once

#include "documents/rtf/DocumentBuilder.h"
#include "documents/rtf/TablePath.h"
#include "documents/rtf/WordList.h"

namespace rtf {

/// Follows the rows and cells while paragraphs are read. A row's definition may stand in front of its cells or behind
/// them; the last one counts, and paragraphs that wait in the builder get it.
class RowTracker {
 public:
  /// Words of a row's definition beyond this many are left out.
  static constexpr int mostWords = 8192;

  /// `\trowd`. Rows of nested tables are defined apart (`nested`), inside a row that already has its definition.
  void BeginDefinition(bool nested, const Keyword& keyword);
  void AddWord(bool nested, const CarriedWord& word);

  /// `\nesttableprops`: a nested row's definition begins anew.
  void ForgetNestedDefinition() { m_definitions[true] = {}; }

  /// Where the paragraph that `builder` inserts next stands, at table level `level`, 0 for none. Rows that this leaves
  /// have ended.
  TablePath Enter(int level, const DocumentBuilder& builder);
  void EndCell(int level);
  void EndRow(int level, bool nested, DocumentBuilder& builder);

 private:
  struct Definition {
    QList<CarriedWord> words;
    QString text;
    bool changed = false;
  };
  struct OpenRow {
    TableLevel place;
    int firstParagraph = 0;
  };

  const QString& Text(bool nested);

  Definition m_definitions[2];
  QList<OpenRow> m_open;
  int m_rows[deepestTable] = {};
};

}  // namespace rtf
