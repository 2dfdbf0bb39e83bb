#include "host/mailing/pieces/ReadMailing.h"

#include "database/Database.h"
#include "database/Snapshot.h"

namespace host {

namespace {

template <typename Mailing, typename Wish>
std::unique_ptr<Mailing> ReadIt(const QString& connectionString, const Wish& wish, int userId) {
  const auto connection = database::CreateConnection(connectionString);
  connection->Open();
  database::BeginSnapshot(*connection);
  return std::make_unique<Mailing>(*connection, wish, userId);
}

}  // namespace

std::unique_ptr<LetterMailing> ReadLetters(const QString& connectionString, const LetterWish& wish, int userId) {
  return ReadIt<LetterMailing>(connectionString, wish, userId);
}

std::unique_ptr<LabelMailing> ReadLabels(const QString& connectionString, const LabelWish& wish, int userId) {
  return ReadIt<LabelMailing>(connectionString, wish, userId);
}

}  // namespace host
