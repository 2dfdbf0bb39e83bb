#pragma once

#include <QVariant>

/// A request that a dialog makes in the middle of its own: sets the host's action and auxiliary value for another
/// dialog, and at its end puts the host's node, action, selected record and auxiliary value back as they were.
class NestedRequest {
 public:
  /// `idAux` is the record that the new one must belong to, 0 for none.
  NestedRequest(const QVariant& idAux, int action);
  NestedRequest(const NestedRequest&) = delete;
  NestedRequest& operator=(const NestedRequest&) = delete;
  ~NestedRequest();

 private:
  int m_node;
  int m_action;
  qint32 m_selected;
  QVariant m_idAux;
};
