#include "host/desktop/DetailPane.h"

#include "host/desktop/RecordList.h"
#include "host/look/LinkLabel.h"
#include "host/look/PlainLabel.h"
#include "host/look/TitleSize.h"
#include "host/records/MomentText.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollBar>
#include <QVBoxLayout>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// How long a selection stays before it is asked for: who walks through a list with the arrows reads nothing.
constexpr std::chrono::milliseconds rest{150};
// In lines of text.
constexpr int lowestList = 5;

QLabel* SelectableLabel(const QString& name, QWidget* parent) {
  QLabel* label = NamedLabel(name, parent);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

// Only numbers and words of the program: the one text here that is not plain.
QString UsesText(const QList<RowCount>& uses) {
  QStringList parts;
  for (const RowCount& use : uses) {
    parts.append(use.nodeId == 0 ? use.Text() : u"<a href=\"%1\">%2</a>"_s.arg(use.nodeId).arg(use.Text()));
  }
  const QString last = parts.isEmpty() ? QString() : parts.takeLast();
  return parts.isEmpty() ? last : parts.join(u", "_s) + u" y "_s + last;
}

QString ChangeText(const std::optional<Change>& change) {
  if (!change) {
    return {};
  }
  const QString user = change->userName.isEmpty() ? u"alguien"_s : u"«%1»"_s.arg(change->userName);
  return u"%1 %2 por %3"_s.arg(KindText(change->kind), DayAndTime(change->moment), user);
}

}  // namespace

DetailPane::DetailPane(DatabaseThread& thread, bool velumar, QWidget* parent)
    : QScrollArea(parent),
      m_velumar(velumar),
      m_title(SelectableLabel(u"lblDetailTitle"_s, this)),
      m_uses(new LinkLabel(this)),
      m_change(SelectableLabel(u"lblDetailChange"_s, this)),
      m_kinds(new QComboBox(this)),
      m_kind(SelectableLabel(u"lblDetailKind"_s, this)),
      m_list(new RecordList(this)),
      m_more(SelectableLabel(u"lblDetailMore"_s, this)),
      m_text(SelectableLabel(u"lblDetailText"_s, this)),
      m_sheet(new SheetThumbnail(this)),
      m_reading(thread, [this](const Shown& shown) { Take(shown); }) {
  Build();
  m_rest.setSingleShot(true);
  m_rest.setInterval(rest);
  connect(&m_rest, &QTimer::timeout, this, &DetailPane::Read);
  connect(m_kinds, &QComboBox::currentIndexChanged, this, [this](int index) {
    m_isAnother = true;
    ShowRelated(index);
  });
  connect(m_list, &RecordList::RecordActivated, this, &DetailPane::OpenRelated);
  connect(m_uses, &QLabel::linkActivated, this,
          [this](const QString& link) { Q_EMIT UsesWanted(link.toInt(), m_node->table, m_id); });
  ShowNothing({});
}

void DetailPane::Build() {
  setWidgetResizable(true);
  setFocusPolicy(Qt::NoFocus);
  setFrameShape(QFrame::NoFrame);
  new TitleSize(*m_title, 1.2);
  m_uses->setObjectName(u"lblDetailUses"_s);
  m_text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  m_kinds->setObjectName(u"detailKinds"_s);
  m_kinds->setAccessibleName(u"Qué se ve del registro elegido"_s);
  m_kinds->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
  m_list->setObjectName(u"detailList"_s);
  // It scrolls by itself, and takes what the rest leaves.
  m_list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
  m_list->setMinimumHeight(fontMetrics().height() * lowestList);
  auto* page = new QWidget(this);
  auto* layout = new QVBoxLayout(page);
  for (QWidget* part : {static_cast<QWidget*>(m_title), static_cast<QWidget*>(m_uses), static_cast<QWidget*>(m_change),
                        static_cast<QWidget*>(m_kinds), static_cast<QWidget*>(m_kind)}) {
    layout->addWidget(part);
  }
  auto* below = new QHBoxLayout;
  below->addWidget(m_list, 1);
  below->addWidget(m_text, 1);
  below->addWidget(m_sheet);
  layout->addLayout(below, 1);
  layout->addWidget(m_more);
  setWidget(page);
}

void DetailPane::Show(const Node& node, int id, const QString& name) {
  m_title->setText(name);
  if (m_node == &node && m_id == id) {
    return;
  }
  m_node = &node;
  m_id = id;
  m_isAnother = true;
  verticalScrollBar()->setValue(0);
  m_reading.Withdraw();
  m_rest.start();
}

void DetailPane::ShowNothing(const QString& text) {
  m_rest.stop();
  m_reading.Withdraw();
  m_node = nullptr;
  m_id = 0;
  Take({});
  m_title->setText({});
  m_change->setText(text);
  m_change->setVisible(!text.isEmpty());
}

void DetailPane::Refresh() {
  if (m_node != nullptr) {
    m_rest.start();
  }
}

void DetailPane::showEvent(QShowEvent* event) {
  QScrollArea::showEvent(event);
  Refresh();
}

void DetailPane::Read() {
  if (m_node == nullptr || !isVisible()) {
    return;
  }
  m_reading.Ask(
      [node = m_node, id = m_id, velumar = m_velumar](adodb::Connection& connection, const DatabaseThread::Wanted&) {
        return Shown{ReadDetail(connection, *node, id, velumar), ReadPreview(connection, *node, id)};
      });
}

void DetailPane::Take(const Shown& shown) {
  m_uses->setText(shown.detail.uses.isEmpty() ? QString() : u"Lo utilizan "_s + UsesText(shown.detail.uses));
  m_uses->setVisible(!shown.detail.uses.isEmpty());
  m_change->setText(ChangeText(shown.detail.lastChange));
  m_change->setVisible(shown.detail.lastChange.has_value());
  m_text->setText(shown.preview.text);
  m_text->setVisible(!shown.preview.text.isEmpty());
  m_sheet->Show(shown.preview.sheet);
  const int current = m_kinds->currentIndex();
  const QSignalBlocker blocker(m_kinds);
  m_kinds->clear();
  m_related = shown.detail.related;
  for (const RelatedRecords& related : std::as_const(m_related)) {
    m_kinds->addItem(related.total == 0 ? related.title : u"%1 (%2)"_s.arg(related.title).arg(related.total));
  }
  m_kinds->setVisible(m_related.size() > 1);
  m_kind->setText(m_kinds->itemText(0));
  m_kind->setVisible(m_related.size() == 1);
  m_kinds->setCurrentIndex(current >= 0 && current < m_related.size() ? current : 0);
  m_isAnother = m_isAnother || m_kinds->currentIndex() != current;
  ShowRelated(m_kinds->currentIndex());
}

void DetailPane::ShowRelated(int index) {
  const bool hasKind = index >= 0 && index < m_related.size();
  m_list->setVisible(hasKind);
  m_more->setVisible(hasKind && m_related[index].total > m_related[index].records.Size());
  if (hasKind) {
    ShowList(m_related[index]);
  }
}

// Who reads in the list of a record keeps the place while others write.
void DetailPane::ShowList(const RelatedRecords& related) {
  m_list->setAccessibleName(u"%1 del registro elegido"_s.arg(related.title));
  if (std::exchange(m_isAnother, false)) {
    m_list->Show(related.records);
    m_list->SetColumnWidths({});
  } else {
    m_list->Refresh(related.records);
  }
  m_list->SetEmptyText(u"%1: no hay."_s.arg(related.title));
  m_more->setText(u"y %1 más"_s.arg(related.total - related.records.Size()));
}

void DetailPane::OpenRelated() {
  const int index = m_kinds->currentIndex();
  const QList<int> ids = m_list->SelectedIds();
  if (index >= 0 && m_related[index].nodeId != 0 && ids.size() == 1) {
    Q_EMIT RecordWanted(m_related[index].nodeId, ids.first(), {});
  }
}

}  // namespace host
