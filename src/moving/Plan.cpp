#include "moving/Plan.h"

#include "moving/KnownRecords.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

using adodb::Verbatim;
using namespace Qt::StringLiterals;

namespace moving {

namespace {

constexpr qint64 highestKept = 2'000'000'000;

// Live rows of the file that hold a number which only one may have, by it.
class UniqueNumbers {
 public:
  explicit UniqueNumbers(const TableRule& rule)
      : m_number(rule.MatchColumns().indexOf(rule.unique)), m_name(rule.MatchColumns().indexOf(rule.uniqueName)) {}

  /// The row before this one that has its number, -1 for none.
  qsizetype Before(const RowFacts& facts, qsizetype row) {
    if (m_number < 0 || !facts.isLive || facts.match[m_number].isEmpty()) {
      return -1;
    }
    const auto found = m_rows.constFind(facts.match[m_number]);
    if (found != m_rows.cend()) {
      return *found;
    }
    m_rows.insert(facts.match[m_number], row);
    return -1;
  }
  bool HaveOneName(const RowFacts& one, const RowFacts& other) const {
    return m_name >= 0 && one.match[m_name] == other.match[m_name];
  }

 private:
  qsizetype m_number;
  qsizetype m_name;
  QHash<QString, qsizetype> m_rows;
};

}  // namespace

// The fates of one table's rows; those that it refers to have theirs.
class Plan::TableDecision {
 public:
  TableDecision(Plan& plan, SurveyedTable& table)
      : m_plan(plan),
        m_table(table),
        m_rule(*table.match->rule),
        m_known(*plan.m_connection, *table.shape, plan.m_identifier),
        m_unique(m_rule),
        m_beside(m_rule.MatchColumns().indexOf(m_rule.beside)),
        m_fates(plan.m_fates[m_rule.table->name]) {}

  void Run() {
    m_fates.resize(m_table.rows.Count());
    for (std::size_t i = 0; i < m_fates.size(); ++i) {
      DecideRow(i);
    }
    GiveNumbers();
    for (const auto& [row, first] : m_joined) {
      m_fates[row].key = m_fates[first].key;
    }
    // Rows of other tables find them by the file's keys.
    QHash<qint64, qint64> here;
    for (std::size_t i = 0; i < m_fates.size(); ++i) {
      const qint64 there = m_table.rows.KeyAt(i);
      if (there != 0 && m_fates[i].key != 0 && !here.contains(there)) {
        here.insert(there, m_fates[i].key);
      }
    }
    m_plan.m_numbers.insert(m_rule.table->name, here);
  }

 private:
  TableReport& Report() { return m_table.report; }

  void DecideRow(std::size_t i) {
    const RowFacts facts = m_table.rows.At(i);
    Fate& fate = m_fates[i];
    if (facts.isRefused) {
      ++Report().leftOut;
      return;
    }
    RowFacts translated = facts;
    for (qsizetype at = 0; at < facts.references.size(); ++at) {
      translated.references[at] = m_plan.KeyHere(*m_table.shape->References()[at].target, facts.references[at]);
    }
    if (LacksOwner(translated)) {
      ++Report().leftOut;
      Report().AddLine(u"%1 no entra: el registro del que depende no existe o no entra"_s.arg(NameOf(i)));
      return;
    }
    fate.key = m_known.Find(translated);
    if (fate.key != 0) {
      // One that came in as deleted for its number stays so.
      const bool isRevived = facts.isLive && m_known.IsDeleted(fate.key) && m_rule.unique.isEmpty();
      fate.kind = isRevived ? Fate::Kind::Revived : Fate::Kind::Known;
      ++(fate.kind == Fate::Kind::Revived ? Report().revived : Report().known);
    } else if (m_rule.onlyKnown) {
      ++Report().remarks[u"no existen aquí; lo que los usa queda como texto libre"_s];
    } else {
      DecideNew(i, facts, translated);
    }
  }

  void DecideNew(std::size_t i, const RowFacts& facts, const RowFacts& translated) {
    Fate& fate = m_fates[i];
    const qsizetype before = m_unique.Before(facts, qsizetype(i));
    if (before >= 0 && m_unique.HaveOneName(facts, m_table.rows.At(std::size_t(before)))) {
      fate.kind = Fate::Kind::Known;
      ++Report().known;
      m_joined.emplace_back(i, std::size_t(before));
      Report().AddLine(
          u"%1: su número es el de %2, que se llama igual; se une a él"_s.arg(NameOf(i), NameOf(std::size_t(before))));
      return;
    }
    fate.kind = Fate::Kind::New;
    ++Report().created;
    m_new.push_back(i);
    if (before >= 0) {
      fate.isDemoted = true;
      Report().AddLine(
          u"%1: su número es también el de %2; entra como eliminado"_s.arg(NameOf(i), NameOf(std::size_t(before))));
    }
    if (m_beside >= 0 && facts.isLive && m_known.TakenNames().contains(facts.match[m_beside])) {
      fate.number = FreeNumber(facts.match[m_beside]);
      Report().AddLine(
          u"%1: aquí hay otro que se llama igual; entra con «%2» detrás del nombre"_s.arg(NameOf(i), fate.Suffix()));
    }
    for (qsizetype at = 0; at < facts.references.size(); ++at) {
      if (facts.references[at] != 0 && translated.references[at] == 0) {
        const database::Column& column = m_rule.table->columns[std::size_t(m_table.shape->References()[at].position)];
        ++Report().remarks[u"«%1» apunta a un registro que no existe y queda en blanco"_s.arg(column.name)];
      }
    }
  }

  bool LacksOwner(const RowFacts& translated) const {
    for (qsizetype i = 0; i < translated.references.size(); ++i) {
      if (m_table.shape->References()[i].isOwner && translated.references[i] == 0) {
        return true;
      }
    }
    return false;
  }

  int FreeNumber(const QString& folded) const {
    int number = 2;
    while (m_known.TakenNames().contains(folded + QString::number(number))) {
      ++number;
    }
    return number;
  }

  void GiveNumbers() {
    QSet<qint64> seen;
    bool areKept = true;
    for (const std::size_t row : m_new) {
      const qint64 key = m_table.rows.KeyAt(row);
      areKept = areKept && key >= 1 && key <= highestKept && !m_known.HasKey(key) && !seen.contains(key);
      seen.insert(key);
    }
    qint64 next = qMax(m_known.HighestKey(), qint64(0)) + 1;
    Report().firstNumber = areKept ? 0 : next;
    for (const std::size_t row : m_new) {
      m_fates[row].key = areKept ? m_table.rows.KeyAt(row) : next++;
    }
  }

  QString NameOf(std::size_t row) const { return RowName(m_table, qsizetype(row)); }

  Plan& m_plan;
  SurveyedTable& m_table;
  const TableRule& m_rule;
  KnownRecords m_known;
  UniqueNumbers m_unique;
  qsizetype m_beside;
  std::vector<Fate>& m_fates;
  std::vector<std::size_t> m_new;
  std::vector<std::pair<std::size_t, std::size_t>> m_joined;
};

Plan::Plan(Survey& survey, adodb::Connection& connection, const std::function<QString(const QString&)>& identifier)
    : m_connection(&connection), m_identifier(identifier) {
  for (const TableRule& rule : TableRules()) {
    for (SurveyedTable& table : survey.tables) {
      if (table.match && table.match->rule == &rule) {
        Decide(table);
      }
    }
  }
}

const Fate& Plan::FateOf(const SurveyedTable& table, std::size_t row) const {
  return m_fates.constFind(table.shape->Here().name)->at(row);
}

qint64 Plan::KeyHere(const database::Table& target, qint64 key) {
  if (key == 0) {
    return 0;
  }
  if (!m_numbers.contains(target.name)) {
    // The file does not have that table: its numbers are those of here.
    QHash<qint64, qint64>& numbers = m_numbers[target.name];
    const auto rows = adodb::Execute(*m_connection, u"SELECT [{}] FROM [{}]", Verbatim{target.columns.front().name},
                                     Verbatim{target.name});
    for (; !rows->AtEnd(); rows->MoveNext()) {
      const qint64 here = rows->Field(0).toLongLong();
      numbers.insert(here, here);
    }
  }
  return m_numbers.constFind(target.name)->value(key);
}

void Plan::Decide(SurveyedTable& table) {
  TableDecision(*this, table).Run();
}

}  // namespace moving
