#include "moving/Answers.h"

#include "platform/automation/Error.h"

#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace moving {

namespace {

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

}  // namespace

QString Answers::Of(const QString& table, const QString& row, const QString& question) const {
  const auto word = [&](const QString& which) {
    return m_words.value(u"%1 %2 %3"_s.arg(table, which, question).toLower());
  };
  const QString own = word(row);
  return own.isEmpty() ? word(u"*"_s) : own;
}

Answers Answers::Read(const QString& path) {
  static const QRegularExpression form(
      u"^(\\w+ (?:\\*|-?\\d+|fila-\\d+) (numero|igual|estado|cambios|administrador))\\s*=\\s*(\\w+)$"_s,
      QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
  constexpr qint64 mostBytes = 16 << 20;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly) || file.size() > mostBytes) {
    Refuse(u"No se puede leer el archivo de respuestas «%1»."_s.arg(path));
  }
  Answers answers;
  int number = 0;
  for (const QString& line : QString::fromUtf8(file.read(mostBytes)).split(u'\n')) {
    ++number;
    const QString words = line.simplified();
    if (words.isEmpty() || words.startsWith(u'#')) {
      continue;
    }
    const auto match = form.match(words);
    if (!match.hasMatch()) {
      Refuse(
          u"La línea %1 del archivo de respuestas no se entiende: escriba TABLA REGISTRO PREGUNTA=RESPUESTA, como las "
          "da el informe entre corchetes."_s.arg(number));
    }
    answers.Give(match.captured(1), match.captured(3));
  }
  return answers;
}

}  // namespace moving
