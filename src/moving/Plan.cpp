#include "moving/Plan.h"

#include "moving/TableDecision.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Error.h"

#include <algorithm>
#include <array>

using adodb::Verbatim;
using namespace Qt::StringLiterals;

namespace moving {

namespace {

// What an office adds before all else.
bool IsUntouched(adodb::Connection& connection) {
  return std::ranges::all_of(std::array{u"Bancos"_s, u"Colaboradores"_s, u"CartasModelo"_s}, [&](const QString& table) {
    return adodb::Execute(connection, u"SELECT COUNT(*) FROM [{}]", Verbatim{table})->Field(0).toInt() == 0;
  });
}

}  // namespace

Plan::Plan(Survey& survey, adodb::Connection& connection, const ImportWishes& wishes)
    : m_connection(&connection), m_isFirst(IsUntouched(connection)) {
  qint64 done = 0;
  for (const TableRule& rule : TableRules()) {
    for (SurveyedTable& table : survey.tables) {
      if (table.match && table.match->rule == &rule) {
        TableDecision(*this, table, wishes).Run();
        if (wishes.progress) {
          wishes.progress(ImportStep::Comparing, ++done, qint64(survey.tables.size()));
        }
      }
    }
  }
}

const std::vector<Fate>& Plan::FatesOf(const SurveyedTable& table) const {
  return *m_fates.constFind(table.shape->Here().name);
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

Finding Ask(const SurveyedTable& table, qsizetype row, const QString& word, const QString& what,
            const QList<Choice>& choices, const Answers& answers, qsizetype usual) {
  Finding finding = NoteOn(table, row, what);
  const QString& here = table.shape->Here().name;
  finding.question = u"%1 %2 %3"_s.arg(here, RowWord(table, row), word);
  finding.choices = choices;
  finding.answer = usual;
  const QString answer = answers.Of(here, RowWord(table, row), word);
  if (!answer.isEmpty()) {
    const auto said = std::ranges::find_if(
        choices, [&](const Choice& choice) { return choice.word.compare(answer, Qt::CaseInsensitive) == 0; });
    if (said == choices.end()) {
      throw automation::Error(automation::InvalidProcedureCall,
                              u"«%1» no es una respuesta de la pregunta «%2»."_s.arg(answer, finding.question));
    }
    finding.answer = said - choices.begin();
  }
  return finding;
}

}  // namespace moving
