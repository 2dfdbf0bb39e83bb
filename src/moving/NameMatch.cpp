#include "moving/NameMatch.h"

#include "platform/text/FoldForSearch.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace moving {

namespace {

QString WithoutEnding(const QString& name) {
  for (const QString& ending : {u"es"_s, u"s"_s}) {
    if (name.endsWith(ending) && name.size() > ending.size() + 2) {
      return name.chopped(ending.size());
    }
  }
  return name;
}

QString WithoutPrefix(const QString& name) {
  return name.startsWith(u"tbl") ? name.mid(3) : name;
}

const TableRule* RuleOf(const QString& folded) {
  const TableRule* alike = nullptr;
  for (const TableRule& rule : TableRules()) {
    const QString here = FoldedName(rule.table->name);
    if (here == folded) {
      return &rule;
    }
    if (WithoutEnding(here) == WithoutEnding(WithoutPrefix(folded))) {
      alike = &rule;
    }
  }
  return alike;
}

const database::Column* ColumnOf(const TableRule& rule, const QString& name) {
  const QString folded = FoldedName(name);
  for (const database::Column& column : rule.table->columns) {
    if (FoldedName(column.name) == folded) {
      return &column;
    }
  }
  return nullptr;
}

QString Wish(const QMap<QString, QString>& wishes, const QString& name, const QString& otherwise) {
  for (auto at = wishes.begin(); at != wishes.end(); ++at) {
    if (at.key().compare(name, Qt::CaseInsensitive) == 0) {
      return at.value();
    }
  }
  return wishes.value(u"*"_s, otherwise);
}

}  // namespace

QString FoldedName(const QString& name) {
  QString folded = texts::FoldForSearch(name);
  folded.removeIf([](QChar each) { return !each.isLetterOrNumber(); });
  return folded;
}

const TableRule* MeantTable(const SourceTable& table, const NameWishes& wishes) {
  return RuleOf(FoldedName(Wish(wishes.tables, table.name, table.name)));
}

QList<const database::Column*> MeantColumns(const TableRule& rule, const SourceTable& table, const NameWishes& wishes) {
  QList<const database::Column*> columns;
  for (const SourceColumn& column : table.columns) {
    const database::Column* here = ColumnOf(rule, Wish(wishes.columns, table.name + u'.' + column.name, column.name));
    const bool isKept = here != nullptr && here != &rule.table->columns.front() && !rule.settings.isEmpty() &&
                        !rule.settings.contains(here->name);
    // A heading that is there twice counts once.
    columns.append(isKept || columns.contains(here) ? nullptr : here);
  }
  return columns;
}

bool AreHeadings(const SourceRow& row) {
  QStringList names;
  for (const SourceCell& cell : row) {
    names.append(cell.text);
  }
  names.removeAll(QString());
  return std::ranges::any_of(TableRules(), [&names](const TableRule& rule) {
    const auto known =
        std::ranges::count_if(names, [&](const QString& name) { return ColumnOf(rule, name) != nullptr; });
    return known >= 2 && 2 * known >= names.size();
  });
}

std::optional<TableMatch> MatchTable(const SourceTable& table, const NameWishes& wishes) {
  TableMatch match;
  match.rule = MeantTable(table, wishes);
  if (match.rule == nullptr) {
    return std::nullopt;
  }
  match.columns = MeantColumns(*match.rule, table, wishes);
  match.key = int(match.columns.indexOf(&match.rule->table->columns.front()));
  const qsizetype matched = match.columns.size() - match.columns.count(nullptr);
  // A key is much alike already.
  const qsizetype usual = match.key >= 0 ? 2 : qMin(qsizetype(match.rule->table->columns.size()) / 2, qsizetype(4));
  const qsizetype enough = wishes.tables.contains(table.name) ? 1 : usual;
  return matched >= enough ? std::optional(match) : std::nullopt;
}

}  // namespace moving
