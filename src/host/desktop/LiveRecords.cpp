#include "host/desktop/LiveRecords.h"

#include "host/records/AffectedRecords.h"
#include "host/records/OfficeConnection.h"
#include "host/records/RecordReader.h"
#include "platform/automation/Error.h"

#include <QApplication>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// Changes are to be seen within two seconds.
constexpr std::chrono::milliseconds pause{1700};

// A longer list is not read anew on a suspicion.
constexpr int longestReadAnew = 10'000;

// What comes together is read together.
constexpr std::chrono::milliseconds shortly{300};

// Null where nobody tells.
std::unique_ptr<database::Notices> Listen(ComponentBridge& bridge, database::Notices::Written hear) {
  try {
    auto notices = std::make_unique<database::Notices>(bridge.OpenConnection(), std::move(hear));
    return notices->AreTold() ? std::move(notices) : nullptr;
  } catch (const automation::Error&) {
    return nullptr;
  }
}

qint64 NewestNote(ComponentBridge& bridge) {
  try {
    return NewestChange(bridge.OpenConnection());
  } catch (const automation::Error&) {
    return 0;
  }
}

}  // namespace

LiveRecords::LiveRecords(ComponentBridge& bridge, DatabaseThread& thread, const RecordLoader& loader, RecordList& list,
                         const QString& connectionString, QObject* parent)
    : QObject(parent),
      m_bridge(bridge),
      m_loader(loader),
      m_list(list),
      m_reader(thread),
      m_changed(
          thread, [this](const ChangedRecords& changed) { TakeChanged(changed); },
          // They stay pending.
          [this](const automation::Error&) { PutOff(std::exchange(m_beingRead, {})); }),
      m_notices(Listen(bridge, [this](const QStringList& tables) { HearOf(tables); })),
      m_watch(connectionString, NewestNote(bridge), m_notices == nullptr) {
  connect(&m_watch, &ChangeWatch::Seen, this, &LiveRecords::TakeNote);
  connect(&m_reader, &RecordLoader::Loaded, this, [this](SortedRecords& records) {
    if (m_node == m_readNode && !m_loader.IsLoading()) {
      m_list.Refresh(std::move(records));
      Q_EMIT Updated();
    }
  });
  connect(&m_reader, &RecordLoader::Failed, this, [this] {
    m_unknown = true;
    TickOn();
  });
  connect(&m_timer, &QTimer::timeout, this, &LiveRecords::Tick);
  TickOn();
  m_soon.setSingleShot(true);
  connect(&m_soon, &QTimer::timeout, this, &LiveRecords::Tick);
}

void LiveRecords::HearOf(const QStringList& tables) {
  if (tables.isEmpty() || tables.contains(u"Cambios"_s)) {
    m_mustLook = true;
    TickOn();
    m_soon.start(shortly);
  }
}

void LiveRecords::Follow(const Node* node) {
  m_node = node;
  m_changed.Withdraw();
  if (m_node == nullptr) {
    m_pending.clear();
  }
}

void LiveRecords::Tick() {
  m_maybeOurs = m_maybeOurs || m_bridge.IsBusy();
  if (MayDisturb()) {
    Apply();
    if (m_notices == nullptr || m_mustLook) {
      m_mustLook = !m_watch.Look();
    }
  }
  // A server tells.
  if (m_notices != nullptr && !m_mustLook && !m_unknown && m_pending.isEmpty()) {
    m_timer.stop();
  }
}

void LiveRecords::PutOff(const QList<Change>& changes) {
  m_pending = changes + m_pending;
  TickOn();
}

void LiveRecords::TickOn() {
  if (!m_timer.isActive()) {
    m_timer.start(pause);
  }
}

void LiveRecords::TakeNote(const SeenChanges& changes) {
  Q_EMIT Noticed(changes);
  if (m_node == nullptr && !m_loader.IsLoading()) {
    return;
  }
  m_pending += changes.notes;
  TickOn();
  const bool isSuspicion = changes.isUnknown && !changes.mayBeLocks && !std::exchange(m_maybeOurs, false);
  if (m_list.Records().TotalCount() <= longestReadAnew) {
    m_unknown = m_unknown || changes.isUnknown;
  } else if (isSuspicion) {
    Q_EMIT MayHaveChanged();
  }
  if (MayDisturb()) {
    Apply();
  }
}

// Changes that arrive while the list is read may be in it or not: the records are read again afterwards.
void LiveRecords::Apply() {
  if (m_node == nullptr || m_loader.IsLoading() || m_reader.IsLoading() || m_changed.IsUnderWay()) {
    return;
  }
  if (std::exchange(m_unknown, false)) {
    ReadAnew();
  } else if (!m_pending.isEmpty()) {
    ReadChanged();
  }
}

void LiveRecords::ReadChanged() {
  m_beingRead = std::exchange(m_pending, {});
  m_changed.Ask([node = *m_node, changes = m_beingRead](adodb::Connection& connection, const DatabaseThread::Wanted&) {
    ChangedRecords changed{.ids = AffectedRecords(connection, node, changes), .records = RecordData(node.columns)};
    if (changed.ids) {
      changed.records = ReadRecords(connection, node, *changed.ids);
    }
    return changed;
  });
}

void LiveRecords::TakeChanged(const ChangedRecords& changed) {
  const QList<Change> changes = std::exchange(m_beingRead, {});
  if (!changed.ids) {
    ReadAnew();
  } else if (!MayDisturb()) {
    PutOff(changes);
  } else if (!changed.ids->isEmpty()) {
    m_list.Update(*changed.ids, changed.records);
    m_list.Mark(WrittenByOthers(changes));
    Q_EMIT Updated();
  }
}

QList<int> LiveRecords::WrittenByOthers(const QList<Change>& changes) const {
  const OfficeConnection* office = m_bridge.Session().office;
  QList<int> ids;
  for (const Change& change : changes) {
    if ((office == nullptr || change.program != office->Program()) && change.table == m_node->table) {
      ids.append(static_cast<int>(change.key));
    }
  }
  return ids;
}

void LiveRecords::ReadAnew() {
  m_pending.clear();
  m_readNode = m_node;
  m_reader.Load(*m_node, m_list.Records().SortColumn());
}

bool LiveRecords::MayDisturb() const {
  const QWidget& window = *m_list.window();
  return window.isVisible() && !window.isMinimized() && !m_bridge.IsBusy() && !m_bridge.IsEnding() &&
         QApplication::activeModalWidget() == nullptr && QApplication::activePopupWidget() == nullptr &&
         QApplication::mouseButtons() == Qt::NoButton;
}

}  // namespace host
