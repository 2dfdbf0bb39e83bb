#include "moving/RowWriter.h"

#include "moving/KnownRecords.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Error.h"

#include <algorithm>

using adodb::Verbatim;
using namespace Qt::StringLiterals;

namespace moving {

namespace {

void CheckStop(const database::Stop& stop) {
  if (stop && stop()) {
    throw automation::Error(adodb::Stopped, u"Se ha cancelado. No se ha traído nada."_s);
  }
}

}  // namespace

void RefuseChangedFile() {
  throw automation::Error(automation::InvalidProcedureCall,
                          u"El archivo ha cambiado mientras se leía. Ciérrelo en el programa que lo usa y repita."_s);
}

RowWriter::RowWriter(Survey& survey, Plan& plan, adodb::Connection& connection, const ImportWishes& wishes, bool writes)
    : m_survey(survey),
      m_plan(plan),
      m_connection(connection),
      m_wishes(wishes),
      m_writes(writes),
      m_seal(QCryptographicHash::Sha256) {
  for (const SurveyedTable& table : survey.tables) {
    m_total += table.report.read;
    SealTable(table);
  }
}

void RowWriter::SealTable(const SurveyedTable& table) {
  AddToSeal(table.report.here);
  if (!table.match) {
    return;
  }
  for (const Fate& fate : m_plan.FatesOf(table)) {
    CheckStop(m_wishes.stop);
    const qint64 marks = (fate.isDemoted ? 1 : 0) | (fate.isGranted ? 2 : 0) | (fate.suffix.isEmpty() ? 0 : 4);
    const qint64 decided = fate.key << 5 | marks << 2 | qint64(fate.kind);
    m_seal.addData(QByteArrayView(reinterpret_cast<const char*>(&decided), sizeof(decided)));
    if (!fate.suffix.isEmpty()) {
      AddToSeal(fate.suffix);
    }
  }
}

bool RowWriter::NeedsRows() const {
  return m_writes || std::ranges::any_of(m_survey.tables, [this](const SurveyedTable& table) {
           return !table.report.findings.isEmpty() ||
                  (table.match && std::ranges::any_of(m_plan.FatesOf(table), &Fate::isCompared));
         });
}

void RowWriter::BeginTable(const SourceTable& /*table*/) {
  if (m_next >= m_survey.tables.size()) {
    RefuseChangedFile();
  }
  m_table = &m_survey.tables[m_next++];
  m_row = 0;
  m_unlabelled.clear();
  const QList<Finding>& findings = m_table->report.findings;
  for (qsizetype i = 0; i < findings.size(); ++i) {
    m_unlabelled.insert(findings[i].row, i);
  }
  m_fates = m_table->match ? &m_plan.FatesOf(*m_table) : nullptr;
}

void RowWriter::Row(const SourceRow& row) {
  CheckStop(m_wishes.stop);
  constexpr qint64 betweenNews = 256;
  if (++m_done % betweenNews == 0 && m_wishes.progress) {
    m_wishes.progress(ImportStep::Writing, m_done, m_total);
  }
  if (!m_table->match) {
    return;
  }
  if (m_row >= m_table->rows.Count()) {
    RefuseChangedFile();
  }
  if (const Fate& fate = (*m_fates)[m_row]; IsNeeded(fate)) {
    WriteRow(fate, Convert(*m_table->match, row).values);
  }
  ++m_row;
}

bool RowWriter::IsNeeded(const Fate& fate) const {
  const bool isWritten = fate.kind == Fate::Kind::New || fate.kind == Fate::Kind::Revived;
  return (m_writes && isWritten) || fate.isCompared || m_unlabelled.contains(qsizetype(m_row));
}

void RowWriter::WriteRow(const Fate& fate, const QList<Value>& values) {
  LabelFindings(values);
  if (fate.kind == Fate::Kind::New) {
    if (m_writes) {
      Insert(fate, WithReferences(values));
    }
    return;
  }
  if (fate.kind == Fate::Kind::Revived) {
    Send(adodb::StatementText(u"UPDATE [{}] SET Eliminado=0 WHERE [{}]={}", Verbatim{Here().name},
                              Verbatim{Here().columns.front().name}, fate.key));
  }
  if (fate.isCompared) {
    Compare(fate, WithReferences(values));
  }
}

void RowWriter::EndTable(qint64 /*missing*/) {
  if (m_table->match && m_row != m_table->rows.Count()) {
    RefuseChangedFile();
  }
  std::ranges::stable_sort(m_table->report.findings, {}, &Finding::row);
}

QList<Value> RowWriter::WithReferences(QList<Value> values) {
  const TableShape& shape = *m_table->shape;
  for (const Reference& reference : shape.References()) {
    const qint64 there = values[reference.position].ToId();
    const qint64 here = m_plan.KeyHere(*reference.target, there);
    const bool isFree = there != 0 && here == 0 && shape.PositionOf(shape.Rule().freeKey) == reference.position;
    if (isFree) {
      values[shape.PositionOf(shape.Rule().freeText)].text.prepend(u'*');
    }
    values[reference.position] = {Value::Kind::Number, QString::number(here)};
  }
  return values;
}

void RowWriter::Insert(const Fate& fate, QList<Value> values) {
  const TableShape& shape = *m_table->shape;
  values.front() = {Value::Kind::Number, QString::number(fate.key)};
  if (fate.isDemoted) {
    values[shape.PositionOf(u"Eliminado"_s)] = {Value::Kind::Number, u"-1"_s};
  }
  if (!fate.suffix.isEmpty()) {
    values[shape.PositionOf(shape.Rule().beside)].text += fate.suffix;
  }
  if (const int grant = shape.PositionOf(shape.Rule().grant); grant >= 0 && !fate.isGranted) {
    values[grant] = {Value::Kind::Number, u"0"_s};
  }
  QString names;
  QString literals;
  for (qsizetype i = 0; i < values.size(); ++i) {
    // What the file does not say is the schema's default.
    if (values[i].kind != Value::Kind::None) {
      const auto separator = names.isEmpty() ? QStringView() : QStringView(u", ");
      names.append(separator).append(u'[').append(Here().columns[std::size_t(i)].name).append(u']');
      literals.append(separator).append(Literal(values[i]));
    }
  }
  Send(adodb::StatementText(u"INSERT INTO [{}] ({}) VALUES ({})", Verbatim{Here().name}, Verbatim{names},
                            Verbatim{literals}));
}

// What the file leaves empty changes nothing.
void RowWriter::Compare(const Fate& fate, const QList<Value>& values) {
  const TableShape& shape = *m_table->shape;
  const QList<Value> here = ReadRecord(m_connection, shape, fate.key);
  QList<int> positions;
  QStringList there;
  QStringList old;
  for (const int position : shape.Changeable()) {
    const Value& value = values[position];
    const bool isNothing = value.IsEmpty() || (shape.IsReference(position) && value.ToId() == 0);
    if (!isNothing && !shape.AreSame(position, value, here[position])) {
      const QString& name = Here().columns[std::size_t(position)].name;
      positions.append(position);
      there += u"%1 «%2»"_s.arg(name, Shown(value));
      old += u"%1 «%2»"_s.arg(name, Shown(here[position]));
    }
  }
  if (positions.isEmpty()) {
    return;
  }
  const bool isSetting = !shape.Rule().settings.isEmpty();
  const bool isTaken = isSetting ? m_plan.IsFirst() : m_table->IsList();
  Finding finding = Ask(*m_table, qsizetype(m_row), u"cambios"_s, there.join(u", "_s),
                        {{u"archivo"_s, u"toma lo del archivo"_s}, {u"aqui"_s, u"se queda como está aquí"_s}},
                        m_wishes.answers, isTaken ? 0 : 1);
  finding.here = old.join(u", "_s);
  finding.label = shape.LabelOf(values);
  AddToSeal(finding.Line());
  if (finding.answer == 0) {
    ++m_table->report.changed;
    if (isSetting) {
      ++m_table->report.remarks[u"se nota cuando el programa se abre de nuevo"_s];
    }
    Update(fate.key, positions, values);
  } else {
    ++m_table->report.differing;
  }
  m_table->report.Add(std::move(finding));
}

void RowWriter::Update(qint64 key, const QList<int>& positions, const QList<Value>& values) {
  QStringList changes;
  for (const int position : positions) {
    changes += u"[%1]="_s.arg(Here().columns[std::size_t(position)].name) + Literal(values[position]);
  }
  Send(adodb::StatementText(u"UPDATE [{}] SET {} WHERE [{}]={}", Verbatim{Here().name}, Verbatim{changes.join(u", ")},
                            Verbatim{Here().columns.front().name}, key));
}

void RowWriter::LabelFindings(const QList<Value>& values) {
  for (auto at = m_unlabelled.constFind(qsizetype(m_row)); at != m_unlabelled.cend() && at.key() == qsizetype(m_row);
       ++at) {
    m_table->report.findings[*at].label = m_table->shape->LabelOf(values);
  }
}

void RowWriter::Send(const QString& statement) {
  if (!m_writes) {
    return;
  }
  try {
    m_connection.Execute(statement);
  } catch (const automation::Error& error) {
    throw automation::Error(error.Number(), u"%1, %2: %3 No se ha traído nada."_s.arg(
                                                Here().name, RowName(*m_table, qsizetype(m_row)), error.Description()));
  }
}

}  // namespace moving
