#include "moving/TableRules.h"

#include "platform/automation/Error.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace moving {

namespace {

[[noreturn]] void Refuse(const QString& word) {
  throw automation::Error(automation::InvalidProcedureCall,
                          u"Las reglas de traslado de este programa tienen un error: «%1»."_s.arg(word));
}

void Take(TableRule& rule, const QString& word) {
  const QString name = word.section(u'=', 0, 0);
  const QString value = word.section(u'=', 1);
  const QString column = value.section(u':', 0, 0);
  const QString more = value.section(u':', 1);
  if (name == u"same") {
    rule.same.append(value.split(u'+'));
  } else if (name == u"nif") {
    rule.identifier = value;
  } else if (name == u"beside") {
    rule.beside = value;
  } else if (name == u"owner") {
    rule.owners.append(value);
  } else if (name == u"pad") {
    rule.widths.insert(column.toLower(), more.toInt());
  } else if (name == u"postcode") {
    rule.postcode = value;
  } else if (name == u"date") {
    rule.dates.append(value);
  } else if (name == u"zero") {
    rule.zeros.append(value);
  } else if (name == u"free") {
    rule.freeKey = column;
    rule.freeText = more;
  } else if (name == u"unique") {
    rule.unique = column;
    rule.uniqueName = more;
  } else if (name == u"alike") {
    rule.alike = value.split(u'+');
  } else if (name == u"setting") {
    rule.settings.append(value);
  } else if (name == u"grant") {
    rule.grant = value;
  } else if (name == u"ask") {
    rule.asks = true;
  } else if (name == u"only") {
    rule.onlyKnown = true;
  } else {
    Refuse(word);
  }
}

std::vector<TableRule> ReadRules() {
  const database::Schema& schema = database::Schema::Current();
  QFile file(u":/kel/schema/traslado.txt"_s);
  if (!file.open(QIODevice::ReadOnly)) {
    Refuse(file.fileName());
  }
  std::vector<TableRule> rules;
  for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n')) {
    QStringList words = line.split(u' ', Qt::SkipEmptyParts);
    if (words.isEmpty() || line.startsWith(u'#')) {
      continue;
    }
    TableRule rule;
    rule.table = schema.FindTable(words.front());
    if (rule.table == nullptr) {
      Refuse(words.front());
    }
    words.removeFirst();
    for (const QString& word : std::as_const(words)) {
      Take(rule, word);
    }
    rules.push_back(rule);
  }
  return rules;
}

}  // namespace

QStringList TableRule::MatchColumns() const {
  QStringList columns;
  for (const QStringList& each : same) {
    columns += each;
  }
  for (const QString& each : {identifier, unique, uniqueName, beside}) {
    columns += each.isEmpty() ? QStringList() : QStringList(each);
  }
  columns.removeDuplicates();
  return columns;
}

const std::vector<TableRule>& TableRules() {
  static const std::vector<TableRule> rules = ReadRules();
  return rules;
}

}  // namespace moving
