#pragma once

#include "host/moving/window/GridView.h"
#include "moving/NameMatch.h"
#include "moving/Outline.h"

#include <QSet>
#include <QWidget>

class QCheckBox;
class QLabel;

namespace host {

/// Which table and column of the file is which one here, to be changed by hand.
class TablesPage : public QWidget {
  Q_OBJECT

 public:
  explicit TablesPage(QWidget* parent = nullptr);

  /// What was said of another file is forgotten, but for tables with the same headings as ones that came in.
  void Show(const moving::Outline& outline, const QString& sheet);
  const moving::NameWishes& Names() const { return m_names; }
  /// For the next file like this one.
  void Remember() const;
  bool SkipsDeleted() const;
  /// Whether any table comes in.
  bool HasMatch() const;

 Q_SIGNALS:
  void Changed();

 private:
  void ShowColumns();
  GridCell TableCell(int row, int column) const;
  GridCell ColumnCell(int row, int column) const;
  void ChooseTable(int row, int choice);
  void ChooseColumn(int row, int choice);
  const moving::OutlinedTable* Current() const;
  QString StateOf(const moving::SourceTable& table) const;

  QList<moving::OutlinedTable> m_tables;
  moving::NameWishes m_names;
  QSet<QString> m_recalled;  ///< Tables of which all that is wished was said the last time.
  GridView* m_list;
  QLabel* m_heading;
  GridView* m_columns;
  QCheckBox* m_skip;
};

}  // namespace host
