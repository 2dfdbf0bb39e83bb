#pragma once

#include "database/postgres/PostgresHandle.h"
#include "database/postgres/PostgresParameters.h"

namespace database {

/// Commands that go to the server in one round trip, and their results in turn. After one that fails the server leaves
/// out the rest. While a pipeline lives its session is its own.
class PostgresPipeline {
 public:
  /// `handle` outlives the pipeline.
  explicit PostgresPipeline(const PostgresHandle& handle);
  PostgresPipeline(const PostgresPipeline&) = delete;
  PostgresPipeline& operator=(const PostgresPipeline&) = delete;
  /// Reads what is left of the results.
  ~PostgresPipeline();

  void Add(const char* command);
  /// One without parameters that comes often: prepared once on a line, under its own text, it costs the server less.
  void AddPreparation(const char* command);
  void AddPrepared(const char* command);
  void AddPreparation(const QByteArray& name, const QByteArray& sql, const PostgresParameters& parameters);
  void AddStatement(const QByteArray& name, const PostgresParameters& parameters);
  /// Sends what was added, and a command that is run by itself once that is done; nobody hears of its failure.
  void Send(const QByteArray& afterwards = {});

  /// Reads the results of that many commands.
  void Pass(int commands);
  /// From now on the current command's rows come one by one.
  void ReadRowByRow();
  /// The next result of the current command, null behind its last.
  PostgresResult Next();
  /// Reads all that is left. Nothing may be read afterwards.
  void Finish();

  /// The first refusal so far.
  bool HasFailed() const { return m_hasFailed; }
  /// Null for a line that was cut.
  const pg_result* Failure() const { return m_failure.get(); }

 private:
  void Require(int accepted);

  const PostgresHandle& m_handle;
  PostgresResult m_failure;
  bool m_hasFailed = false;
  bool m_isDone = true;  ///< What was added has been answered.
  int m_awaited = 0;     ///< Answers on their way, that of the last command among them.
};

}  // namespace database
