#pragma once

#include <QHash>
#include <QList>
#include <QString>

namespace moving {

/// One of the answers that a question has.
struct Choice {
  QString word;  ///< What stands for it in a file of answers: a word of these tables, or the key of a record here.
  QString text;  ///< "se une a él", for people.

  bool operator==(const Choice&) const = default;
};

/// What a person answered. A question is "TABLE ROW WORD": the table here, the row's key in the file or "fila-N", and
/// what is asked; ROW is "*" for all rows of the table that have no answer of their own.
///   - numero=unir|eliminado       another row has a number that only one may have
///   - igual=nuevo|KEY             it may be a record that is here
///   - estado=vuelve|queda         it is marked as deleted here, and not there
///   - cambios=archivo|aqui        the record here has other values
///   - administrador=no|si         the user is an administrator there
class Answers {
 public:
  /// The question's answer; empty for none.
  QString Of(const QString& table, const QString& row, const QString& question) const;
  void Give(const QString& question, const QString& answer) { m_words.insert(question.toLower(), answer); }
  bool IsEmpty() const { return m_words.isEmpty(); }

  /// Reads lines "TABLE ROW WORD=ANSWER"; "#" begins a remark. Raises 5, naming the line, for another one.
  static Answers Read(const QString& path);

 private:
  QHash<QString, QString> m_words;
};

}  // namespace moving
