#include "host/desktop/HomePage.h"

#include "host/desktop/WindowMemory.h"
#include "host/look/PlainLabel.h"
#include "host/records/MomentText.h"
#include "host/records/OfficeSettings.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/contract/cConstNodo.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTime>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr qsizetype shownRecords = 8;
constexpr int daysOfACopy = 7;
// What comes together is read together.
constexpr std::chrono::milliseconds shortly{300};

// One needs the other: a bank before who presents to it, a presenter before its issuers.
struct Step {
  int nodeId;
  QString text;
};

QList<Step> Steps() {
  const cConstNodo node;
  return {{node.Bancos(), u"Un banco con sus sucursales"_s},
          {node.Presentadores(), u"Un presentador: quien lleva los discos al banco"_s},
          {node.Emisores(), u"Un emisor: quien cobra los recibos"_s},
          {node.TipoDonativos(), u"Un tipo de donativo"_s},
          {node.CartasModelo(), u"Una carta modelo"_s}};
}

QString Greeting(const QString& user) {
  const int hour = QTime::currentTime().hour();
  const QString greeting = hour >= 6 && hour < 14    ? u"Buenos días"_s
                           : hour >= 14 && hour < 21 ? u"Buenas tardes"_s
                                                     : u"Buenas noches"_s;
  return user.isEmpty() ? greeting : u"%1, %2"_s.arg(greeting, user);
}

QString StateMark(bool isDone) {
  return isDone ? u"✓ "_s : u"○ "_s;
}

}  // namespace

HomePage::HomePage(DatabaseThread& thread, const std::vector<Node>& nodes, Texts texts, QWidget* parent)
    : QScrollArea(parent),
      m_nodes(nodes),
      m_texts(std::move(texts)),
      m_reading(thread, [this](const Contents& contents) { Take(contents); }) {
  setObjectName(u"homePage"_s);
  setAccessibleName(u"Inicio"_s);
  setWidgetResizable(true);
  setFocusPolicy(Qt::NoFocus);
  setFrameShape(QFrame::NoFrame);
  auto* page = new QWidget(this);
  auto* layout = new QVBoxLayout(page);
  const int margin = fontMetrics().height();
  layout->setContentsMargins(margin * 2, margin, margin * 2, margin);
  layout->setSpacing(margin / 2);
  m_greeting = PlainLabel(Greeting(m_texts.user), page);
  m_greeting->setObjectName(u"lblGreeting"_s);
  m_office = PlainLabel(m_texts.database, page);
  m_office->setObjectName(u"lblOffice"_s);
  layout->addWidget(m_greeting);
  layout->addWidget(m_office);
  m_steps = MakeSection(u"homeSteps"_s, u"Primeros pasos"_s, *layout);
  m_concerns = MakeSection(u"homeConcerns"_s, u"Conviene revisar"_s, *layout);
  m_written = MakeSection(u"homeWritten"_s, u"Últimos registros"_s, *layout);
  m_nothing = PlainLabel(u"No hay nada pendiente. Elija a la izquierda qué registros quiere ver."_s, page);
  m_nothing->hide();
  layout->addWidget(m_nothing);
  layout->addStretch(1);
  setWidget(page);
  DressTitles();
  m_soon.setSingleShot(true);
  m_soon.setInterval(shortly);
  connect(&m_soon, &QTimer::timeout, this, &HomePage::Read);
}

HomePage::Section HomePage::MakeSection(const QString& name, const QString& title, QVBoxLayout& layout) {
  auto* box = new QWidget(this);
  box->setObjectName(name);
  auto* lines = new QVBoxLayout(box);
  lines->setContentsMargins(0, fontMetrics().height() / 2, 0, 0);
  lines->setSpacing(2);
  auto* heading = PlainLabel(title, box);
  heading->setObjectName(u"heading"_s);
  lines->addWidget(heading);
  layout.addWidget(box);
  box->hide();
  return {box, lines, {}};
}

void HomePage::DressTitles() {
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.6);
  large.setBold(true);
  m_greeting->setFont(large);
  QFont bold = font();
  bold.setBold(true);
  for (QLabel* heading : findChildren<QLabel*>(u"heading"_s)) {
    heading->setFont(bold);
  }
}

void HomePage::changeEvent(QEvent* event) {
  QScrollArea::changeEvent(event);
  if (event->type() == QEvent::FontChange && m_greeting != nullptr) {
    DressTitles();
  }
}

void HomePage::SetCounts(const QHash<int, int>& counts) {
  m_counts.insert(counts);
  ShowSteps();
}

void HomePage::SetTexts(Texts texts) {
  m_texts = std::move(texts);
  m_greeting->setText(Greeting(m_texts.user));
  if (m_hasContents) {
    Take(Contents(m_contents));
  }
}

void HomePage::OfferCopies(std::function<void()> makeCopy) {
  m_makeCopy = std::move(makeCopy);
}

void HomePage::Refresh() {
  if (isVisible()) {
    m_soon.start();
  }
}

void HomePage::showEvent(QShowEvent* event) {
  QScrollArea::showEvent(event);
  m_greeting->setText(Greeting(m_texts.user));
  Read();
}

void HomePage::Read() {
  m_reading.Ask(
      [&nodes = m_nodes, file = m_texts.databaseFile](adodb::Connection& connection, const DatabaseThread::Wanted&) {
        return Contents{.office = OfficeName(connection),
                        .written = LastWritten(connection, nodes, shownRecords),
                        .concerns = FindConcerns(connection, nodes),
                        .oldLocks = CountOldLocks(connection, QDateTime::currentDateTimeUtc().addDays(-1)),
                        .copy = NewestCopy(file)};
      });
}

void HomePage::Take(const Contents& contents) {
  m_contents = contents;
  m_hasContents = true;
  m_office->setText(contents.office.isEmpty() ? m_texts.database : contents.office + u" · "_s + m_texts.database);
  Fill(m_concerns, ConcernLines(contents));
  Fill(m_written, WrittenLines(contents.written));
  ShowSteps();
}

void HomePage::ShowSteps() {
  if (m_hasContents && !m_counts.isEmpty()) {
    Fill(m_steps, WantsFirstSteps() ? StepLines() : QList<Line>());
  }
}

// None when all is done, or for who can't do any of it.
QList<HomePage::Line> HomePage::StepLines() {
  QList<Line> lines;
  bool isAllDone = true;
  for (const Step& step : Steps()) {
    const bool isDone = m_counts.value(step.nodeId) > 0;
    isAllDone = isAllDone && isDone;
    Line line{.text = StateMark(isDone) + step.text};
    if (!isDone) {
      line.way = u"Agregar…"_s;
      line.act = [this, nodeId = step.nodeId] { Q_EMIT AdditionWanted(nodeId); };
    }
    lines.append(line);
  }
  if (m_makeCopy) {
    isAllDone = isAllDone && m_contents.copy;
    lines.append({.text = StateMark(m_contents.copy.has_value()) + u"Una copia de seguridad"_s,
                  .way = m_contents.copy ? QString() : u"Hacer una copia…"_s,
                  .act = m_makeCopy});
  }
  if (isAllDone || m_texts.readOnly) {
    return {};
  }
  lines.append({.text = {}, .way = u"No mostrar más los primeros pasos"_s, .act = [this] {
                  ForgoFirstSteps();
                  ShowSteps();
                }});
  return lines;
}

QList<HomePage::Line> HomePage::WrittenLines(const QList<Change>& written) {
  QList<Line> lines;
  for (const Change& change : written) {
    const Node* node = FindNodeByTable(change.table);
    const QString user = change.userName.isEmpty() ? QString() : u" por "_s + change.userName;
    Line line{.text = u"%1 (%2): %3 %4%5"_s.arg(change.name, node->title, KindText(change.kind).toLower(),
                                                DayAndTime(change.moment), user)};
    const int id = static_cast<int>(change.key);
    if (change.kind != ChangeKind::Deleted) {
      line.way = u"Ver"_s;
      line.act = [this, nodeId = node->id, id] { Q_EMIT RecordsWanted(nodeId, {id}); };
    } else if (!m_texts.readOnly) {
      line.way = u"Recuperar"_s;
      line.act = [this, nodeId = node->id, id] { Q_EMIT RecoveryWanted(nodeId, id); };
    }
    lines.append(line);
  }
  return lines;
}

QList<HomePage::Line> HomePage::ConcernLines(const Contents& contents) {
  QList<Line> lines;
  for (const Concern& concern : contents.concerns) {
    lines.append({.text = concern.text, .way = u"Ver"_s, .act = [this, concern] {
                    Q_EMIT RecordsWanted(concern.nodeId, concern.ids);
                  }});
  }
  if (contents.oldLocks > 0) {
    const QString records =
        contents.oldLocks == 1 ? u"1 registro lleva"_s : u"%1 registros llevan"_s.arg(contents.oldLocks);
    lines.append({.text = records + u" más de un día en uso"_s,
                  .way = m_texts.administrator ? u"Ver"_s : QString(),
                  .act = [this] { Q_EMIT LocksWanted(); }});
  }
  const auto age = contents.copy ? contents.copy->daysTo(QDateTime::currentDateTime()) : 0;
  if (age > daysOfACopy) {
    lines.append({.text = u"La última copia de seguridad tiene %1 días"_s.arg(age),
                  .way = m_makeCopy ? u"Hacer una copia…"_s : QString(),
                  .act = m_makeCopy});
  }
  return lines;
}

// Lines that say the same stay, with the focus.
void HomePage::Fill(Section& section, const QList<Line>& lines) {
  QStringList texts;
  for (const Line& line : lines) {
    texts.append(line.text + u'\n' + line.way);
  }
  section.box->setVisible(!lines.isEmpty());
  const bool isSame = std::exchange(section.shown, texts) == texts;
  m_nothing->setVisible(m_steps.shown.isEmpty() && m_concerns.shown.isEmpty() && m_written.shown.isEmpty());
  if (isSame) {
    return;
  }
  while (section.lines->count() > 1) {
    const std::unique_ptr<QLayoutItem> item(section.lines->takeAt(1));
    item->widget()->deleteLater();
  }
  for (const Line& line : lines) {
    auto* row = new QWidget(section.box);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    if (!line.text.isEmpty()) {
      auto* text = PlainLabel(line.text.simplified(), row);
      QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
      policy.setHeightForWidth(true);
      text->setSizePolicy(policy);
      layout->addWidget(text, 1);
    }
    if (!line.way.isEmpty()) {
      auto* way = new QPushButton(line.way, row);
      way->setAccessibleName(line.text.isEmpty() ? line.way : line.way + u": "_s + line.text.simplified());
      connect(way, &QPushButton::clicked, this, line.act);
      layout->addWidget(way, 0, Qt::AlignLeft);
    }
    section.lines->addWidget(row);
    row->show();
  }
}

}  // namespace host
