#pragma once

#include <QVariant>

class QObject;

namespace framework {

/// Serves the request that a services object carries, as a call of the host is served. The entry class puts its own
/// here, so that a dialog reaches the dispatcher of the library that it belongs to, whatever is registered by name;
/// before its first call there is none (error 91).
using Dispatcher = void (*)(QObject* services);
Dispatcher& OwnDispatcher();

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

}  // namespace framework
