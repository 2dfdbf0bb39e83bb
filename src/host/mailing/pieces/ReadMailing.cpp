#include "host/mailing/pieces/ReadMailing.h"

#include "database/Database.h"
#include "database/Maintenance.h"

namespace host {

namespace {

template <typename Mailing, typename Wish>
std::unique_ptr<Mailing> ReadIt(const QString& connectionString, const Wish& wish, int userId) {
  const auto connection = database::CreateConnection(connectionString);
  connection->Open();
  // A transaction takes the write lock, which a database for reading alone does not give.
  std::optional<adodb::Transaction> transaction;
  if (database::MayBeWritten(connectionString)) {
    transaction.emplace(*connection);
  }
  auto mailing = std::make_unique<Mailing>(*connection, wish, userId);
  if (transaction) {
    transaction->Commit();
  }
  return mailing;
}

}  // namespace

std::unique_ptr<LetterMailing> ReadLetters(const QString& connectionString, const LetterWish& wish, int userId) {
  return ReadIt<LetterMailing>(connectionString, wish, userId);
}

std::unique_ptr<LabelMailing> ReadLabels(const QString& connectionString, const LabelWish& wish, int userId) {
  return ReadIt<LabelMailing>(connectionString, wish, userId);
}

}  // namespace host
