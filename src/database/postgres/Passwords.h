#pragma once

#include "database/ConnectionString.h"
#include "database/Password.h"

#include <QByteArray>
#include <QMutex>

#include <utility>
#include <vector>

namespace database {

/// The passwords that somebody has answered with, and the question; of the whole process, for any thread.
class Passwords {
 public:
  static Passwords& Instance();

  void SetQuestion(PasswordQuestion question);
  /// The remembered answer for that place, null for none.
  QByteArray Find(const ConnectionString::ServerPlace& place);
  /// Asks, and remembers the answer in the place of the last one. False where nobody answers.
  bool Ask(const ConnectionString& target);
  void Forget(const ConnectionString::ServerPlace& place);

 private:
  QMutex m_mutex;
  PasswordQuestion m_question;
  std::vector<std::pair<ConnectionString::ServerPlace, QByteArray>> m_answers;
};

}  // namespace database
