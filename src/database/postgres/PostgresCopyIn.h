#pragma once

#include "database/engine/Transfer.h"
#include "database/postgres/PostgresHandle.h"

namespace database {

/// Rows that go to the server as one stream (COPY), with their keys. Nothing else runs on the handle until it is
/// finished; what is not finished is not stored.
class PostgresCopyIn : public RowTaker {
 public:
  /// `handle` outlives the object. Raises the engine's refusal.
  PostgresCopyIn(const PostgresHandle& handle, const Table& table);
  ~PostgresCopyIn() override;

  void Add(const CarriedRow& row) override;
  void Finish() override;

 private:
  void Send();
  void RequireSuccess(bool succeeded) const;

  const PostgresHandle& m_handle;
  QByteArray m_waiting;
  bool m_isOpen = false;
};

}  // namespace database
