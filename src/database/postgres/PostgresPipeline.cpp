#include "database/postgres/PostgresPipeline.h"

#include <libpq-fe.h>

namespace database {

PostgresPipeline::PostgresPipeline(const PostgresHandle& handle) : m_handle(handle) {
  Require(PQenterPipelineMode(handle.Engine()));
}

PostgresPipeline::~PostgresPipeline() {
  Finish();
  PQexitPipelineMode(m_handle.Engine());
}

// The library takes no command where the line is cut.
void PostgresPipeline::Require(int accepted) {
  m_hasFailed = m_hasFailed || accepted == 0;
}

void PostgresPipeline::Add(const char* command) {
  Require(PQsendQueryParams(m_handle.Engine(), command, 0, nullptr, nullptr, nullptr, nullptr, 0));
}

void PostgresPipeline::AddPreparation(const char* command) {
  Require(PQsendPrepare(m_handle.Engine(), command, command, 0, nullptr));
}

void PostgresPipeline::AddPrepared(const char* command) {
  Require(PQsendQueryPrepared(m_handle.Engine(), command, 0, nullptr, nullptr, nullptr, 0));
}

void PostgresPipeline::AddPreparation(const QByteArray& name, const QByteArray& sql,
                                      const PostgresParameters& parameters) {
  Require(PQsendPrepare(m_handle.Engine(), name.constData(), sql.constData(), parameters.Count(), parameters.Types()));
}

void PostgresPipeline::AddStatement(const QByteArray& name, const PostgresParameters& parameters) {
  Require(PQsendQueryPrepared(m_handle.Engine(), name.constData(), parameters.Count(), parameters.Pointers(),
                              parameters.Lengths(), parameters.Formats(), 0));
}

void PostgresPipeline::Send(const QByteArray& afterwards) {
  m_awaited = PQpipelineSync(m_handle.Engine());
  Require(m_awaited);
  m_isDone = m_awaited == 0;
  if (!afterwards.isEmpty() && !m_hasFailed) {
    Add(afterwards.constData());
    m_awaited += PQpipelineSync(m_handle.Engine());
  }
}

void PostgresPipeline::Pass(int commands) {
  for (int i = 0; i < commands && !m_hasFailed; ++i) {
    while (Next() != nullptr) {
    }
  }
}

void PostgresPipeline::ReadRowByRow() {
  if (!m_hasFailed) {
    Require(PQsetSingleRowMode(m_handle.Engine()));
  }
}

PostgresResult PostgresPipeline::Next() {
  PostgresResult result(PQgetResult(m_handle.Engine()));
  const ExecStatusType status = result == nullptr ? PGRES_COMMAND_OK : PQresultStatus(result.get());
  if (status == PGRES_FATAL_ERROR && !m_hasFailed && !m_isDone) {
    m_hasFailed = true;
    m_failure = std::move(result);
    return nullptr;
  }
  if (status == PGRES_PIPELINE_SYNC) {
    m_isDone = true;
    --m_awaited;
  }
  return result;
}

void PostgresPipeline::Finish() {
  while (m_awaited > 0 && m_handle.IsAlive()) {
    Next();
  }
  m_hasFailed = m_hasFailed || !m_isDone;
  m_isDone = true;
  m_awaited = 0;
}

}  // namespace database
