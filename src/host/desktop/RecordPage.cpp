#include "host/desktop/RecordPage.h"

#include "database/Database.h"
#include "database/Place.h"
#include "host/desktop/HistoryDialog.h"
#include "host/desktop/MailingOpener.h"
#include "host/desktop/WindowMemory.h"
#include "host/records/OptionalColumns.h"
#include "host/records/RecordReader.h"
#include "host/records/RecordReferences.h"
#include "host/services/ErrorBox.h"
#include "platform/automation/Error.h"
#include "platform/contract/cConstNodo.h"
#include "platform/text/Counted.h"
#include "ui_RecordPage.h"

#include <QAction>
#include <QFileInfo>
#include <QHeaderView>
#include <QResizeEvent>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int mostShownChanges = 500;
// In lines of text.
constexpr int lowestWithDetail = 20;

QString CountText(int shown, int total) {
  const QString all = texts::Counted(total, u"registro"_s, u"registros"_s);
  return shown == total ? all : u"%1 de %2"_s.arg(texts::Grouped(shown), all);
}

}  // namespace

RecordPage::RecordPage(ComponentBridge& bridge, DatabaseThread& thread, const QString& connectionString,
                       const RecordActions& actions, QString title, bool readOnly, QWidget* parent)
    : QWidget(parent),
      m_bridge(bridge),
      m_actions(actions),
      m_connectionString(connectionString),
      m_title(std::move(title)),
      m_readOnly(readOnly),
      m_ui(std::make_unique<Ui::RecordPage>()),
      m_loader(thread),
      m_dialogs(bridge, this),
      m_detail(new DetailPane(thread, bridge.Session().velumar, this)) {
  m_ui->setupUi(this);
  setFocusProxy(m_ui->recordList);
  m_live = std::make_unique<LiveRecords>(bridge, thread, m_loader, *m_ui->recordList, connectionString);
  m_showAll = new QAction(u"Ver todos"_s, this);
  connect(m_showAll, &QAction::triggered, m_ui->txtSearch, &QLineEdit::clear);
  ConnectActions();
  SetUpDetail();
  ConnectOutput();
  connect(m_ui->txtSearch, &QLineEdit::textChanged, this, &RecordPage::Search);
  connect(m_ui->txtSearch, &SearchBox::ListWanted, m_ui->recordList, qOverload<>(&QWidget::setFocus));
  connect(m_ui->recordList, &RecordList::RecordActivated, m_actions.modify, &QAction::trigger);
  connect(m_ui->recordList, &RecordList::ShownColumnsChanged, this, &RecordPage::ReadWantedColumns);
  connect(m_ui->recordList, &RecordList::SelectedRecordsChanged, this, &RecordPage::UpdateState);
  connect(&m_loader, &RecordLoader::Loaded, this, &RecordPage::ShowList);
  connect(&m_loader, &RecordLoader::Failed, this, &RecordPage::ShowReadError);
  connect(m_live.get(), &LiveRecords::Updated, this, &RecordPage::UpdateState);
  connect(m_live.get(), &LiveRecords::Noticed, this, &RecordPage::Noticed);
  connect(m_live.get(), &LiveRecords::MayHaveChanged, this, [this] {
    m_isInDoubt = true;
    Q_EMIT StateChanged();
  });
  connect(&m_dialogs, &RecordDialogs::Told, this, &RecordPage::Told);
  connect(&m_dialogs, &RecordDialogs::RecoveryWanted, this, [this](int note) { RecoverAndShow({note}); });
  connect(&m_dialogs, &RecordDialogs::RecordWanted, this, [this](const Node& node, int id) { Open(node, id, {}); });
  UpdateState();
}

RecordPage::~RecordPage() {
  StoreLayout();
}

void RecordPage::ConnectActions() {
  connect(m_actions.add, &QAction::triggered, this, &RecordPage::Add);
  connect(m_actions.modify, &QAction::triggered, this, &RecordPage::Modify);
  connect(m_actions.remove, &QAction::triggered, this, &RecordPage::Delete);
  connect(m_actions.undoDelete, &QAction::triggered, this, &RecordPage::UndoDelete);
  connect(m_actions.recover, &QAction::triggered, this, &RecordPage::RecoverSelected);
  connect(m_actions.newBranch, &QAction::triggered, this, &RecordPage::NewBranch);
  connect(m_actions.history, &QAction::triggered, this, &RecordPage::ShowHistory);
  connect(m_actions.refresh, &QAction::triggered, this, [this] {
    Q_EMIT NewsChanged({});
    Refresh();
  });
  connect(m_actions.find, &QAction::triggered, m_ui->txtSearch, [box = m_ui->txtSearch] {
    box->setFocus(Qt::ShortcutFocusReason);
    box->selectAll();
  });
  m_ui->recordList->addActions({m_actions.add, m_actions.modify, m_actions.remove, m_actions.recover,
                                m_actions.newBranch, m_actions.history, m_actions.writeToPeople, m_actions.refresh});
}

void RecordPage::Leave() {
  if (m_node == nullptr) {
    return;
  }
  StoreLayout();
  Q_EMIT NewsChanged({});
  m_loader.Withdraw();
  m_live->Follow(nullptr);
  m_ui->txtSearch->clear();
  m_ui->recordList->Show({RecordData(m_node->columns)});
  m_node = nullptr;
  m_listed = nullptr;
  m_shown = false;
  m_isInDoubt = false;
  m_selectWhenRead.clear();
  UpdateState();
}

void RecordPage::SetUpDetail() {
  m_ui->detailSplitter->addWidget(m_detail);
  m_ui->detailSplitter->setStretchFactor(0, 3);
  m_ui->detailSplitter->setStretchFactor(1, 2);
  LoadDetail(*m_ui->detailSplitter, *m_actions.detail);
  connect(m_actions.detail, &QAction::toggled, this, &RecordPage::ShowDetail);
  connect(m_live.get(), &LiveRecords::Noticed, m_detail, &DetailPane::Refresh);
  connect(m_detail, &DetailPane::UsesWanted, this, &RecordPage::ShowUses);
  connect(m_detail, &DetailPane::RecordWanted, this,
          [this](int nodeId, int id, const QString& name) { Open(*FindNode(nodeId), id, name); });
  ShowDetail();
}

// Where the window is too low for both, the list has it alone.
void RecordPage::ShowDetail() {
  m_detail->setVisible(m_actions.detail->isChecked() && height() >= fontMetrics().height() * lowestWithDetail);
}

void RecordPage::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  ShowDetail();
}

void RecordPage::ShowUses(int nodeId, const QString& table, int id) {
  try {
    ShowRecords(nodeId, ReferringIds(m_bridge.OpenConnection(), *FindNode(nodeId), table, id));
  } catch (const automation::Error& error) {
    ShowError(this, m_title, u"No se ha podido leer la base de datos."_s, error);
  }
}

void RecordPage::ShowRecords(int nodeId, const QList<int>& ids) {
  if (m_node != nullptr && nodeId == m_node->id) {
    Select(ids);
    return;
  }
  Q_EMIT NodeWanted(nodeId);
  m_selectWhenRead = ids;
}

void RecordPage::ConnectOutput() {
  connect(m_actions.copy, &QAction::triggered, m_ui->recordList, [list = m_ui->recordList] { list->Copy(false); });
  connect(m_actions.copyWithHeadings, &QAction::triggered, m_ui->recordList,
          [list = m_ui->recordList] { list->Copy(true); });
  connect(m_actions.exportList, &QAction::triggered, this, &RecordPage::Export);
  connect(m_actions.print, &QAction::triggered, this, &RecordPage::Print);
  connect(m_actions.columns, &QAction::triggered, m_ui->recordList, [list = m_ui->recordList] {
    list->AskForColumns(list->mapToGlobal(QPoint(0, list->horizontalHeader()->height())));
  });
  // Where a text has the focus it is copied.
  for (QAction* copy : {m_actions.copy, m_actions.copyWithHeadings}) {
    copy->setShortcutContext(Qt::WidgetShortcut);
    m_ui->recordList->addAction(copy);
  }
}

void RecordPage::Show(const Node& node) {
  StoreLayout();
  Q_EMIT NewsChanged({});
  m_node = &node;
  m_live->Follow(nullptr);
  m_shown = false;
  m_readFailed = false;
  m_selectWhenRead.clear();
  m_ui->txtSearch->clear();
  const ListLayout layout = LoadListLayout(ListScope(), WithOptionalColumns(node, true, true));
  m_listed = Listed(node, layout.shown);
  m_ui->recordList->Show({RecordData(m_listed->columns), layout.sortColumn}, layout.order, node.typedColumn);
  m_ui->recordList->SetShownColumns(layout.shown);
  m_ui->recordList->SetColumnWidths(layout.widths);
  Refresh();
}

const Node* RecordPage::Listed(const Node& node, const QList<int>& shown) {
  const Node all = WithOptionalColumns(node, true, true);
  const auto isShown = [&](ListColumn::Source source) {
    return std::ranges::any_of(shown, [&](int column) { return all.columns.value(column).source == source; });
  };
  const bool uses = isShown(ListColumn::Source::Uses);
  const bool lastChange = isShown(ListColumn::Source::LastChange);
  const int key = node.id * 4 + (uses ? 2 : 0) + (lastChange ? 1 : 0);
  return &m_variants.try_emplace(key, WithOptionalColumns(node, uses, lastChange)).first->second;
}

void RecordPage::ReadWantedColumns() {
  const Node* wanted = m_node == nullptr ? nullptr : Listed(*m_node, m_ui->recordList->ShownColumns());
  if (wanted != m_listed) {
    m_listed = wanted;
    m_live->Follow(nullptr);
    Refresh();
  }
}

void RecordPage::ShowList(SortedRecords& records) {
  m_readFailed = false;
  m_isInDoubt = false;
  if (m_shown) {
    m_ui->recordList->Refresh(std::move(records));
  } else {
    m_shown = true;
    // A heading may have been clicked while the records were read.
    const int wanted = m_ui->recordList->Records().SortColumn();
    const Qt::SortOrder order = m_ui->recordList->Records().SortOrder();
    m_ui->recordList->Show(std::move(records), order, m_node->typedColumn);
    m_ui->recordList->sortByColumn(wanted, order);
    m_ui->recordList->SetColumnWidths(m_ui->recordList->ChosenWidths());
  }
  m_live->Follow(m_listed);
  Select(std::exchange(m_selectWhenRead, {}));
  UpdateState();
}

void RecordPage::ShowReadError(const automation::Error& error) {
  m_readFailed = true;
  UpdateState();
  ShowError(this, m_title, u"No se ha podido leer la lista «%1»."_s.arg(m_node->title), error);
}

void RecordPage::Add() {
  if (m_node == nullptr || !m_node->canAdd) {
    return;
  }
  const Node& node = *m_node;
  try {
    const int highest = HighestKey(m_bridge.OpenConnection(), node);
    Q_EMIT NewsChanged({});
    m_dialogs.Add(node);
    if (m_bridge.IsEnding()) {
      return;
    }
    // Another user may have added records, too; the one just accepted is the youngest.
    const RecordData added = ReadRecordsAbove(m_bridge.OpenConnection(), *m_listed, highest);
    QList<int> ids;
    for (int row = 0; row < added.Size(); ++row) {
      ids.append(added.Id(row));
    }
    const QList<int> youngest = ids.isEmpty() ? ids : QList<int>{*std::max_element(ids.cbegin(), ids.cend())};
    if (!ids.isEmpty() && !ReadsAllAnew(youngest)) {
      m_ui->recordList->Update(ids, added);
      Select(youngest);
      UpdateState();
    }
  } catch (const automation::Error& error) {
    ShowError(this, m_title, u"No se ha podido leer la base de datos."_s, error);
  }
  m_ui->recordList->setFocus();
}

void RecordPage::Modify() {
  if (m_node != nullptr && m_node->hasDialog && SelectedId() != 0) {
    Open(*m_node, SelectedId(), SelectedName());
  }
}

void RecordPage::Open(const Node& node, int id, const QString& name) {
  Q_EMIT NewsChanged({});
  m_dialogs.Modify(node, id, name);
  if (m_node != nullptr && m_node->id == node.id) {
    ShowChanged({id});
  }
}

void RecordPage::OpenAgain(const ComponentRequest& request) {
  m_dialogs.OpenAgain(request);
  Refresh();
}

void RecordPage::NewBranch() {
  if (m_node != nullptr && m_node->id == cConstNodo().Bancos() && SelectedId() != 0) {
    const int bank = SelectedId();
    Q_EMIT NewsChanged({});
    m_dialogs.AddBranch(bank, SelectedName());
    ShowChanged({bank});
  }
}

void RecordPage::ShowHistory() {
  if (m_node == nullptr || SelectedId() == 0) {
    return;
  }
  try {
    HistoryDialog(SelectedName(), ChangesOf(m_bridge.OpenConnection(), m_node->table, SelectedId(), mostShownChanges),
                  this)
        .exec();
  } catch (const automation::Error& error) {
    ShowError(this, m_title, u"No se ha podido leer el historial."_s, error);
  }
}

ListHead RecordPage::Head() const {
  return {.title = m_node->title,
          .search = m_ui->txtSearch->text().trimmed(),
          .origin = QFileInfo(database::PlaceOf(m_connectionString).shown).fileName(),
          .user = m_bridge.Session().userName};
}

void RecordPage::Export() {
  if (m_node != nullptr) {
    Q_EMIT NewsChanged(ExportShownList(*m_ui->recordList, Head(), this));
  }
}

void RecordPage::Print() {
  if (m_node != nullptr) {
    Q_EMIT NewsChanged(PrintShownList(*m_ui->recordList, Head(), m_connectionString, this));
  }
}

QList<DeletionTarget> RecordPage::SelectedTargets() const {
  const RecordModel& records = m_ui->recordList->Records();
  QList<DeletionTarget> targets;
  const QList<int> rows = m_ui->recordList->SelectedRows();
  for (const int row : rows) {
    targets.append({records.IdAt(row), records.NameAt(row, m_node->nameColumns)});
  }
  return targets;
}

QString RecordPage::SelectedName() const {
  const QList<DeletionTarget> targets = SelectedTargets();
  return targets.isEmpty() ? QString() : targets.constFirst().name;
}

void RecordPage::Refresh() {
  if (m_node != nullptr) {
    m_loader.Load(*m_listed, m_ui->recordList->Records().SortColumn());
    UpdateState();
  }
}

void RecordPage::ShowChanged(const QList<int>& ids, const QList<int>& selected) {
  if (m_bridge.IsEnding() || ids.isEmpty() || ReadsAllAnew(selected)) {
    return;
  }
  try {
    m_ui->recordList->Update(ids, ReadRecords(m_bridge.OpenConnection(), *m_listed, ids));
  } catch (const automation::Error& error) {
    ShowReadError(error);
  }
  Select(selected);
  UpdateState();
}

bool RecordPage::ReadsAllAnew(const QList<int>& selected) {
  if (m_shown && !m_loader.IsLoading()) {
    return false;
  }
  m_selectWhenRead = selected;
  Refresh();
  return true;
}

void RecordPage::Select(const QList<int>& ids) {
  if (!ids.isEmpty() && !m_ui->recordList->SelectRecords(ids)) {
    m_ui->txtSearch->clear();
    m_ui->recordList->SelectRecords(ids);
  }
}

void RecordPage::Search(const QString& typed) {
  m_ui->recordList->SetFilter(typed);
  UpdateState();
}

void RecordPage::UpdateState() {
  const RecordList& list = *m_ui->recordList;
  const qsizetype selected = list.SelectedCount();
  const bool mayChange = m_node != nullptr && !m_readOnly && !m_bridge.Session().readOnly;
  m_actions.add->setEnabled(mayChange && m_node->canAdd);
  m_actions.modify->setEnabled(m_node != nullptr && m_node->hasDialog && selected == 1);
  m_actions.remove->setEnabled(mayChange && m_bridge.Session().mayDelete && m_node->canDelete && selected > 0);
  m_actions.undoDelete->setEnabled(!m_readOnly && !m_bridge.Session().readOnly && !m_deletions.isEmpty());
  m_actions.recover->setVisible(m_node != nullptr && m_node->canRecover);
  m_actions.recover->setEnabled(mayChange && m_node->canRecover && selected > 0);
  m_actions.newBranch->setVisible(m_node != nullptr && m_node->id == cConstNodo().Bancos());
  m_actions.newBranch->setEnabled(mayChange && m_node->id == cConstNodo().Bancos() && selected == 1);
  m_actions.writeToPeople->setVisible(m_node != nullptr && MailingOpener::IsFor(*m_node));
  m_actions.writeToPeople->setEnabled(m_node != nullptr && MailingOpener::IsFor(*m_node) && selected == 1);
  m_actions.history->setEnabled(m_node != nullptr && m_node->hasDialog && selected == 1);
  m_actions.copy->setEnabled(selected > 0);
  m_actions.copyWithHeadings->setEnabled(selected > 0);
  m_actions.exportList->setEnabled(m_node != nullptr && list.Records().rowCount() > 0);
  m_actions.print->setEnabled(m_node != nullptr && list.Records().rowCount() > 0);
  m_actions.columns->setEnabled(m_node != nullptr);
  m_actions.find->setEnabled(m_node != nullptr);
  m_ui->lblHits->setText(CountText(list.Records().rowCount(), list.Records().TotalCount()));
  ShowEmptyState();
  if (selected == 1 && m_node != nullptr) {
    m_detail->Show(*m_node, SelectedId(), SelectedName());
  } else {
    m_detail->ShowNothing(selected == 0 ? QString() : u"%1 registros elegidos"_s.arg(selected));
  }
  Q_EMIT StateChanged();
}

QString RecordPage::SelectionText() const {
  const int shown = m_ui->recordList->Records().rowCount();
  const int selected = m_ui->recordList->SelectedCount();
  return shown == 0 ? QString()
                    : texts::Grouped(selected) + u" de "_s + texts::Grouped(shown) +
                          (selected == 1 ? u" seleccionado"_s : u" seleccionados"_s);
}

// One sentence, and the next step.
void RecordPage::ShowEmptyState() {
  const bool isSearch = !m_loader.IsLoading() && m_ui->recordList->Records().TotalCount() > 0;
  QAction* way = nullptr;
  if (isSearch) {
    way = m_showAll;
  } else if (m_readFailed) {
    way = m_actions.refresh;
  } else if (!m_loader.IsLoading() && m_actions.add->isEnabled()) {
    way = m_actions.add;
  }
  m_ui->recordList->SetEmptyText(EmptyText(), way);
}

QString RecordPage::EmptyText() const {
  if (m_node == nullptr) {
    return u"Elija a la izquierda qué registros quiere ver."_s;
  }
  if (m_loader.IsLoading()) {
    return u"Leyendo la lista…"_s;
  }
  if (m_ui->recordList->Records().TotalCount() > 0) {
    return u"Ningún registro contiene «%1»."_s.arg(m_ui->txtSearch->text().trimmed());
  }
  if (m_readFailed) {
    return u"No se ha podido leer la lista."_s;
  }
  if (m_node->canRecover) {
    return u"No hay registros eliminados que se puedan recuperar."_s;
  }
  return u"No hay registros."_s;
}

int RecordPage::SelectedId() const {
  const QList<int> ids = m_ui->recordList->SelectedIds();
  return ids.size() == 1 ? ids.first() : 0;
}

// Wherever its file goes, a database is known again; another one has lists of its own.
QString RecordPage::ListScope() const {
  const Session& session = m_bridge.Session();
  return u"%1-%2"_s.arg(session.database, QString::number(session.userId));
}

void RecordPage::StoreLayout() const {
  if (m_node == nullptr) {
    return;
  }
  const RecordList& list = *m_ui->recordList;
  SaveDetail(*m_ui->detailSplitter, *m_actions.detail);
  SaveListLayout(ListScope(), *m_listed,
                 {.shown = list.ChosenColumns(),
                  .widths = list.ChosenWidths(),
                  .sortColumn = list.Records().SortColumn(),
                  .order = list.Records().SortOrder()});
}

}  // namespace host
