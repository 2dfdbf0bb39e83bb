#include "moving/TableDecision.h"

#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/Error.h"

using namespace Qt::StringLiterals;

namespace moving {

namespace {

constexpr qint64 highestKept = 2'000'000'000;

}  // namespace

TableDecision::TableDecision(Plan& plan, SurveyedTable& table, const ImportWishes& wishes)
    : m_plan(plan),
      m_table(table),
      m_wishes(wishes),
      m_rule(*table.match->rule),
      m_known(*plan.m_connection, *table.shape, wishes),
      m_beside(m_rule.MatchColumns().indexOf(m_rule.beside)),
      m_number(m_rule.MatchColumns().indexOf(m_rule.unique)),
      m_numberName(m_rule.MatchColumns().indexOf(m_rule.uniqueName)),
      m_fates(plan.m_fates[m_rule.table->name]) {}

void TableDecision::Run() {
  m_fates.resize(m_table.rows.Count());
  for (std::size_t i = 0; i < m_fates.size(); ++i) {
    if (m_wishes.stop && m_wishes.stop()) {
      throw automation::Error(adodb::Stopped, u"Se ha cancelado. No se ha traído nada."_s);
    }
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

void TableDecision::DecideRow(std::size_t row) {
  const RowFacts facts = m_table.rows.At(row);
  if (facts.isRefused || facts.isSkipped) {
    ++(facts.isRefused ? Report().leftOut : Report().skipped);
    return;
  }
  RowFacts translated = facts;
  for (qsizetype at = 0; at < facts.references.size(); ++at) {
    translated.references[at] = m_plan.KeyHere(*m_table.shape->References()[at].target, facts.references[at]);
  }
  if (LacksOwner(translated)) {
    ++Report().leftOut;
    Report().Add(NoteOn(m_table, qsizetype(row), u"no entra: el registro del que depende no existe o no entra"_s));
    return;
  }
  if (const KnownRecords::Found found = m_known.Find(translated); found.key != 0) {
    DecideKnown(row, facts.isLive, found);
  } else if (m_rule.onlyKnown) {
    ++Report().remarks[u"no existen aquí; lo que los usa queda como texto libre"_s];
  } else {
    DecideNew(row, facts, translated);
  }
}

void TableDecision::DecideKnown(std::size_t row, bool isLive, KnownRecords::Found found) {
  Fate& fate = m_fates[row];
  fate.kind = Fate::Kind::Known;
  fate.key = found.key;
  ++Report().known;
  const bool isMet = m_met.contains(found.key);
  m_met.insert(found.key);
  fate.isCompared = !found.isSame && !isMet;
  if (isMet && m_table.IsList()) {
    Report().Add(NoteOn(m_table, qsizetype(row), u"está dos veces en el archivo; vale la primera"_s));
  }
  // One that came in as deleted for its number stays so.
  const bool isOff = isLive && m_known.IsDeleted(found.key) && m_rule.unique.isEmpty() && !isMet;
  if (isOff && Answer(row, u"estado"_s, u"está eliminado aquí"_s, {},
                      {{u"vuelve"_s, u"vuelve a estar"_s}, {u"queda"_s, u"se queda eliminado"_s}},
                      m_table.IsList() ? 1 : 0) == u"vuelve") {
    fate.kind = Fate::Kind::Revived;
    ++Report().revived;
  }
}

void TableDecision::DecideNew(std::size_t row, const RowFacts& facts, const RowFacts& translated) {
  if (IsJoined(row, facts) || IsTakenForKnown(row, facts)) {
    return;
  }
  Fate& fate = m_fates[row];
  fate.kind = Fate::Kind::New;
  ++Report().created;
  m_new.push_back(row);
  if (m_beside >= 0 && facts.isLive && m_known.Named(facts.match[m_beside]) != 0) {
    fate.suffix = FreeSuffix(facts.match[m_beside]);
  }
  if (facts.isGranted) {
    fate.isGranted = Answer(row, u"administrador"_s, u"es administrador allí"_s, {},
                            {{u"no"_s, u"entra sin ese permiso"_s}, {u"si"_s, u"entra como administrador"_s}}) == u"si";
  }
  TellLostReferences(facts, translated);
}

bool TableDecision::IsJoined(std::size_t row, const RowFacts& facts) {
  const qsizetype before = RowWithItsNumber(row, facts);
  if (before < 0) {
    return false;
  }
  const auto other = std::size_t(before);
  const bool haveOneName = m_numberName >= 0 && facts.match[m_numberName] == m_table.rows.At(other).match[m_numberName];
  const QString answer = Answer(
      row, u"numero"_s,
      u"su número es también el de %1%2"_s.arg(NameOf(other), haveOneName ? u", que se llama igual"_s : QString()), {},
      {{u"unir"_s, u"se une a él"_s}, {u"eliminado"_s, u"entra como eliminado"_s}}, haveOneName ? 0 : 1);
  if (answer != u"unir") {
    m_fates[row].isDemoted = true;
    return false;
  }
  m_fates[row].kind = Fate::Kind::Known;
  ++Report().known;
  m_joined.emplace_back(row, other);
  return true;
}

bool TableDecision::IsTakenForKnown(std::size_t row, const RowFacts& facts) {
  const qint64 named = m_beside >= 0 && facts.isLive ? m_known.Named(facts.match[m_beside]) : 0;
  const qint64 alike = facts.isLive ? m_known.Alike(facts) : 0;
  QString answer = u"nuevo"_s;
  if (named != 0 || alike != 0) {
    const qint64 key = named != 0 ? named : alike;
    const QString suffix =
        named != 0 ? u" con «%1» detrás del nombre"_s.arg(FreeSuffix(facts.match[m_beside])) : QString();
    answer =
        Answer(row, u"igual"_s, named != 0 ? u"aquí hay otro que se llama igual"_s : u"aquí hay uno que se le parece"_s,
               m_table.shape->LabelOf(ReadRecord(*m_plan.m_connection, *m_table.shape, key)),
               {{u"nuevo"_s, u"entra como otro%1"_s.arg(suffix)},
                {QString::number(key), u"es el de aquí, que se queda como está"_s}});
  } else if (m_rule.asks && facts.isLive) {
    answer = Answer(row, u"igual"_s, u"no está aquí con ese nombre"_s, {},
                    QList<Choice>{{u"nuevo"_s, u"entra como nuevo"_s}} + m_known.Live());
  }
  if (answer == u"nuevo") {
    return false;
  }
  m_fates[row].kind = Fate::Kind::Known;
  m_fates[row].key = answer.toLongLong();
  ++Report().known;
  return true;
}

qsizetype TableDecision::RowWithItsNumber(std::size_t row, const RowFacts& facts) {
  if (m_number < 0 || !facts.isLive || facts.match[m_number].isEmpty()) {
    return -1;
  }
  const auto found = m_numbers.constFind(facts.match[m_number]);
  if (found != m_numbers.cend()) {
    return *found;
  }
  m_numbers.insert(facts.match[m_number], qsizetype(row));
  return -1;
}

void TableDecision::TellLostReferences(const RowFacts& facts, const RowFacts& translated) {
  for (qsizetype at = 0; at < facts.references.size(); ++at) {
    if (facts.references[at] != 0 && translated.references[at] == 0) {
      const database::Column& column = m_rule.table->columns[std::size_t(m_table.shape->References()[at].position)];
      ++Report().remarks[u"«%1» apunta a un registro que no existe y queda en blanco"_s.arg(column.name)];
    }
  }
}

bool TableDecision::LacksOwner(const RowFacts& translated) const {
  for (qsizetype i = 0; i < translated.references.size(); ++i) {
    if (m_table.shape->References()[i].isOwner && translated.references[i] == 0) {
      return true;
    }
  }
  return false;
}

QString TableDecision::FreeSuffix(const QString& folded) const {
  int number = 2;
  while (m_known.Named(folded + QString::number(number)) != 0) {
    ++number;
  }
  return u" (%1)"_s.arg(number);
}

void TableDecision::GiveNumbers() {
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

QString TableDecision::Answer(std::size_t row, const QString& word, const QString& what, const QString& here,
                              const QList<Choice>& choices, qsizetype usual) {
  Finding finding = Ask(m_table, qsizetype(row), word, what, choices, m_wishes.answers, usual);
  finding.here = here;
  const QString answer = choices[finding.answer].word;
  Report().Add(std::move(finding));
  return answer;
}

}  // namespace moving
