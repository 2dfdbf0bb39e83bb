#include "database/postgres/Passwords.h"

#include <QMutexLocker>

namespace database {

void SetPasswordQuestion(PasswordQuestion question) {
  Passwords::Instance().SetQuestion(std::move(question));
}

Passwords& Passwords::Instance() {
  static Passwords instance;
  return instance;
}

void Passwords::SetQuestion(PasswordQuestion question) {
  const QMutexLocker lock(&m_mutex);
  m_question = std::move(question);
}

QByteArray Passwords::Find(const ConnectionString::ServerPlace& place) {
  const QMutexLocker lock(&m_mutex);
  for (const auto& [answered, password] : m_answers) {
    if (answered == place) {
      return password;
    }
  }
  return {};
}

void Passwords::Forget(const ConnectionString::ServerPlace& place) {
  const QMutexLocker lock(&m_mutex);
  std::erase_if(m_answers, [&](const auto& answer) { return answer.first == place; });
}

// Unlocked meanwhile: a box may be shown for long.
bool Passwords::Ask(const ConnectionString& target) {
  const bool isRepeated = !Find(target.Server()).isNull();
  Forget(target.Server());
  PasswordQuestion question;
  {
    const QMutexLocker lock(&m_mutex);
    question = m_question;
  }
  const std::optional<QString> answer = question ? question(target.ShownName(), isRepeated) : std::nullopt;
  if (answer) {
    const QMutexLocker lock(&m_mutex);
    m_answers.emplace_back(target.Server(), answer->toUtf8());
  }
  return answer.has_value();
}

}  // namespace database
