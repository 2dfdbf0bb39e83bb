#include "moving/Survey.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace moving {

namespace {

// Names of columns that do not come in: other ones, what no table here can hold, a heading that is there again.
QStringList LeftColumns(const SourceTable& table, const TableMatch& match) {
  QStringList names;
  for (qsizetype i = 0; i < table.columns.size(); ++i) {
    const bool goesNowhere = match.columns[i] == nullptr || table.columns[i].kind == Cell::Foreign;
    if (goesNowhere && !table.columns[i].name.isEmpty()) {
      names.append(table.columns[i].name);
    }
  }
  return names;
}

// In a list a separator too many has moved the values into other columns; beside a sheet people write what they like.
void CheckLength(const SourceTable& table, const SourceRow& row, ConvertedRow& converted) {
  const auto isFilled = [](const SourceCell& cell) { return cell.kind != Cell::None; };
  const qsizetype filled = std::find_if(row.rbegin(), row.rend(), isFilled).base() - row.begin();
  constexpr qsizetype most = 60;
  const qsizetype headings = table.columns.size();
  if (filled > headings && table.isText) {
    converted.refusal = u"tiene %1 celdas, y los títulos son %2"_s.arg(filled).arg(headings);
  } else if (filled > headings) {
    converted.notes.append(
        u"lo que hay a la derecha de los títulos no se trae: «%1»"_s.arg(row.constLast().text.left(most)));
  } else if (row.size() < headings && table.isText) {
    converted.notes.append(u"tiene %1 celdas, y los títulos son %2"_s.arg(row.size()).arg(headings));
  }
}

// What is said now goes before what was said once.
NameWishes NamesFor(const SourceTable& table, const ImportWishes& wishes) {
  NameWishes names;
  if (wishes.memory != nullptr) {
    wishes.memory->Recall(table, names);
  }
  if (wishes.names.tables.contains(u"*"_s)) {
    names.tables.remove(table.name);
  }
  names.tables.insert(wishes.names.tables);
  names.columns.insert(wishes.names.columns);
  return names;
}

}  // namespace

void Survey::BeginTable(const SourceTable& table) {
  SurveyedTable surveyed;
  surveyed.source = table;
  surveyed.report.there = table.name;
  surveyed.report.why = u"no es una tabla de este programa, o no tiene sus columnas"_s;
  const NameWishes names = NamesFor(table, *m_wishes);
  if (const auto match = MatchTable(table, names)) {
    const bool isTaken = std::any_of(tables.begin(), tables.end(), [&](const SurveyedTable& each) {
      return each.match && each.match->rule == match->rule;
    });
    if (isTaken) {
      surveyed.report.why = u"otra tabla del archivo ocupa su sitio; diga cuál con «--tabla»"_s;
    } else {
      surveyed.match = std::make_unique<TableMatch>(*match);
      surveyed.shape = std::make_unique<TableShape>(*match);
      surveyed.report.here = match->rule->table->name;
      surveyed.report.leftColumns = LeftColumns(table, *match);
    }
  }
  tables.push_back(std::move(surveyed));
}

void Survey::Row(const SourceRow& row) {
  SurveyedTable& table = tables.back();
  ++table.report.read;
  constexpr qint64 betweenNews = 256;
  if (m_wishes->progress && ++m_read % betweenNews == 0) {
    m_wishes->progress(ImportStep::Reading, m_read, 0);
  }
  if (!table.match) {
    return;
  }
  ConvertedRow converted = Convert(*table.match, row);
  CheckLength(table.source, row, converted);
  const auto number = qsizetype(table.rows.Count());
  RowFacts facts = table.shape->FactsOf(converted.values);
  facts.isRefused = !converted.refusal.isEmpty();
  table.rows.Append(facts);
  if (facts.isRefused) {
    table.report.Add(NoteOn(table, number, u"no entra: "_s + converted.refusal));
    return;
  }
  for (const QString& remark : converted.remarks) {
    ++table.report.remarks[remark];
  }
  for (const QString& note : converted.notes) {
    table.report.Add(NoteOn(table, number, note));
  }
  if (m_wishes->inspect) {
    for (const QString& remark : m_wishes->inspect(table.shape->Here(), converted.values)) {
      table.report.Add(NoteOn(table, number, remark));
    }
  }
}

void Survey::EndTable(qint64 missing) {
  tables.back().report.missing = missing;
}

QString RowName(const SurveyedTable& table, qsizetype row) {
  const qint64 key = table.rows.KeyAt(std::size_t(row));
  return key != 0 ? u"%1 %2"_s.arg(table.shape->Here().columns.front().name, QString::number(key))
                  : u"Fila %1"_s.arg(row + 1);
}

QString RowWord(const SurveyedTable& table, qsizetype row) {
  const qint64 key = table.rows.KeyAt(std::size_t(row));
  return key != 0 ? QString::number(key) : u"fila-%1"_s.arg(row + 1);
}

Finding NoteOn(const SurveyedTable& table, qsizetype row, const QString& what) {
  return {.row = row, .name = RowName(table, row), .what = what};
}

}  // namespace moving
