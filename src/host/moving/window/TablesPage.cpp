#include "host/moving/window/TablesPage.h"

#include "moving/NameMemory.h"
#include "moving/TableRules.h"
#include "platform/text/Counted.h"

#include <QCheckBox>
#include <QLabel>
#include <QSettings>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString nowhere = u"— no entra —"_s;

QStringList TablesHere() {
  QStringList names = {nowhere};
  for (const moving::TableRule& rule : moving::TableRules()) {
    names.append(rule.table->name);
  }
  std::sort(names.begin() + 1, names.end());
  return names;
}

QStringList ColumnsOf(const moving::TableRule& rule) {
  QStringList names = {nowhere};
  for (const database::Column& column : rule.table->columns) {
    names.append(column.name);
  }
  return names;
}

}  // namespace

TablesPage::TablesPage(QWidget* parent)
    : QWidget(parent),
      m_list(new GridView("grdTablas", u"Tablas del archivo"_s,
                          {u"En el archivo"_s, u"Registros"_s, u"Aquí"_s, u"Columnas"_s}, this)),
      m_heading(new QLabel(this)),
      m_columns(new GridView("grdColumnas", u"Columnas de la tabla"_s,
                             {u"Columna del archivo"_s, u"Ejemplo"_s, u"Aquí"_s}, this)),
      m_skip(new QCheckBox(u"&Dejar fuera lo que está eliminado en el archivo y nadie usa"_s, this)) {
  constexpr int nameLetters = 24;
  constexpr int numberLetters = 11;
  m_list->SetWidths({nameLetters, numberLetters, nameLetters});
  m_columns->SetWidths({nameLetters, nameLetters + numberLetters});
  m_heading->setTextFormat(Qt::PlainText);
  m_heading->setObjectName(u"lblTabla"_s);
  m_skip->setObjectName(u"chkSinEliminados"_s);
  auto* lower = new QWidget(this);
  auto* lowerLayout = new QVBoxLayout(lower);
  lowerLayout->setContentsMargins({});
  lowerLayout->addWidget(m_heading);
  lowerLayout->addWidget(m_columns, 1);
  auto* splitter = new QSplitter(Qt::Vertical, this);
  splitter->setChildrenCollapsible(false);
  splitter->addWidget(m_list);
  splitter->addWidget(lower);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->addWidget(splitter, 1);
  layout->addWidget(m_skip);
  connect(m_list, &GridView::RowReached, this, &TablesPage::ShowColumns);
  connect(m_list, &GridView::Chosen, this, [this](int row, int /*column*/, int choice) { ChooseTable(row, choice); });
  connect(m_columns, &GridView::Chosen, this,
          [this](int row, int /*column*/, int choice) { ChooseColumn(row, choice); });
  connect(m_skip, &QCheckBox::toggled, this, &TablesPage::Changed);
}

bool TablesPage::SkipsDeleted() const {
  return m_skip->isChecked();
}

void TablesPage::Show(const moving::Outline& outline, const QString& sheet) {
  m_tables.clear();
  for (const moving::OutlinedTable& table : outline.tables) {
    if (sheet.isEmpty() || sheet == table.table.name) {
      m_tables.append(table);
    }
  }
  m_names = {};
  m_recalled.clear();
  QSettings settings;
  const moving::NameMemory memory(settings);
  for (const moving::OutlinedTable& table : std::as_const(m_tables)) {
    if (memory.Recall(table.table, m_names)) {
      m_recalled.insert(table.table.name);
    }
  }
  m_list->Show(static_cast<int>(m_tables.size()), [this](int row, int column) { return TableCell(row, column); });
  ShowColumns();
}

void TablesPage::Remember() const {
  QSettings settings;
  moving::NameMemory memory(settings);
  for (const moving::OutlinedTable& table : m_tables) {
    memory.Keep(table.table, m_names);
  }
}

bool TablesPage::HasMatch() const {
  return std::ranges::any_of(m_tables, [this](const moving::OutlinedTable& table) {
    return moving::MatchTable(table.table, m_names).has_value();
  });
}

const moving::OutlinedTable* TablesPage::Current() const {
  const int row = m_list->CurrentRow();
  return row >= 0 && row < m_tables.size() ? &m_tables[row] : nullptr;
}

QString TablesPage::StateOf(const moving::SourceTable& table) const {
  const moving::TableRule* rule = moving::MeantTable(table, m_names);
  if (rule == nullptr) {
    return {};
  }
  const QList<const database::Column*> columns = moving::MeantColumns(*rule, table, m_names);
  const QString matched = u"%1 de %2"_s.arg(columns.size() - columns.count(nullptr)).arg(columns.size());
  const QString counted = m_recalled.contains(table.name) ? matched + u", como la última vez"_s : matched;
  return moving::MatchTable(table, m_names) ? counted : counted + u": son pocas; elíjala aquí y diga sus columnas"_s;
}

GridCell TablesPage::TableCell(int row, int column) const {
  const moving::OutlinedTable& table = m_tables[row];
  const moving::TableRule* rule = moving::MeantTable(table.table, m_names);
  GridCell cell;
  cell.isDim = !moving::MatchTable(table.table, m_names);
  switch (column) {
    case 0:
      cell.text = table.table.name;
      break;
    case 1:
      cell.text = texts::Grouped(table.rows);
      cell.isNumber = true;
      break;
    case 2:
      cell.text = rule == nullptr ? nowhere : rule->table->name;
      cell.choices = TablesHere;
      cell.choice = static_cast<int>(TablesHere().indexOf(cell.text));
      break;
    default:
      cell.text = StateOf(table.table);
  }
  return cell;
}

GridCell TablesPage::ColumnCell(int row, int column) const {
  const moving::OutlinedTable& table = *Current();
  const moving::TableRule* rule = moving::MeantTable(table.table, m_names);
  GridCell cell;
  if (column == 0) {
    cell.text = table.table.columns[row].name;
  } else if (column == 1) {
    constexpr qsizetype most = 100;
    for (const moving::SourceRow& each : table.first) {
      cell.text = cell.text.isEmpty() ? each.value(row).text.left(most).simplified() : cell.text;
    }
  } else if (rule != nullptr) {
    const database::Column* here = moving::MeantColumns(*rule, table.table, m_names)[row];
    cell.text = here == nullptr ? nowhere : here->name;
    cell.isDim = here == nullptr;
    cell.choices = [rule] { return ColumnsOf(*rule); };
    cell.choice = static_cast<int>(ColumnsOf(*rule).indexOf(cell.text));
  }
  return cell;
}

void TablesPage::ShowColumns() {
  const moving::OutlinedTable* table = Current();
  m_heading->setText(table == nullptr ? QString() : u"Columnas de «%1»"_s.arg(table->table.name));
  m_columns->Show(table == nullptr ? 0 : static_cast<int>(table->table.columns.size()),
                  [this](int row, int column) { return ColumnCell(row, column); });
}

void TablesPage::ChooseTable(int row, int choice) {
  m_recalled.remove(m_tables[row].table.name);
  m_names.tables.insert(m_tables[row].table.name, choice == 0 ? moving::nothingHere : TablesHere().value(choice));
  m_list->Rows().Update();
  ShowColumns();
  Q_EMIT Changed();
}

// Another column that had the place loses it.
void TablesPage::ChooseColumn(int row, int choice) {
  const moving::SourceTable& table = Current()->table;
  const moving::TableRule& rule = *moving::MeantTable(table, m_names);
  const QString here = choice == 0 ? moving::nothingHere : ColumnsOf(rule).value(choice);
  const QList<const database::Column*> columns = moving::MeantColumns(rule, table, m_names);
  for (qsizetype i = 0; i < columns.size(); ++i) {
    if (columns[i] != nullptr && columns[i]->name == here) {
      m_names.columns.insert(table.name + u'.' + table.columns[i].name, moving::nothingHere);
    }
  }
  m_names.columns.insert(table.name + u'.' + table.columns[row].name, here);
  m_names.tables.insert(table.name, rule.table->name);
  m_recalled.remove(table.name);
  m_columns->Rows().Update();
  m_list->Rows().Update();
  Q_EMIT Changed();
}

}  // namespace host
