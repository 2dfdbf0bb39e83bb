#pragma once

#include "database/engine/PlanCache.h"

#include <QByteArray>

#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace database {

/// A plan's statements on the server, one for each choice of types, and where their names go when nobody needs them.
class ServerStatements : public PreparedForms {
 public:
  using Discarded = std::shared_ptr<std::vector<QByteArray>>;

  explicit ServerStatements(Discarded discarded) : m_discarded(std::move(discarded)) {}
  ~ServerStatements() override {
    for (const auto& [signature, name] : m_names) {
      m_discarded->push_back(name);
    }
  }
  ServerStatements(const ServerStatements&) = delete;
  ServerStatements& operator=(const ServerStatements&) = delete;

  static ServerStatements& Of(CachedPlan& plan, const Discarded& discarded) {
    if (plan.prepared == nullptr) {
      plan.prepared = std::make_unique<ServerStatements>(discarded);
    }
    return static_cast<ServerStatements&>(*plan.prepared);
  }

  /// Empty for types that no statement is prepared for.
  QByteArray Find(const QByteArray& signature) const {
    const auto found = m_names.find(signature);
    return found == m_names.end() ? QByteArray() : found->second;
  }
  void Remember(const QByteArray& signature, const QByteArray& name) { m_names.emplace(signature, name); }
  void Forget(const QByteArray& signature) { m_names.erase(signature); }

 private:
  Discarded m_discarded;
  std::map<QByteArray, QByteArray> m_names;
};

}  // namespace database
