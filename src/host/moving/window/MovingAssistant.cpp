#include "host/moving/window/MovingAssistant.h"

#include "host/help/HelpDesk.h"
#include "host/look/TitleSize.h"
#include "host/moving/window/FilePage.h"
#include "host/moving/window/PreviewPage.h"
#include "host/moving/window/TablesPage.h"
#include "host/services/PlainBox.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/text/Counted.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QStringList titles = {u"Archivo"_s, u"Tablas y columnas"_s, u"Qué entra"_s, u"Traer los datos"_s, u"Informe"_s};

QFrame* Line(QWidget* parent) {
  auto* line = new QFrame(parent);
  line->setFrameShape(QFrame::HLine);
  line->setFrameShadow(QFrame::Sunken);
  return line;
}

}  // namespace

MovingAssistant::MovingAssistant(MovingPlace place, const QString& title, QWidget* parent)
    : QDialog(parent),
      m_place(std::move(place)),
      m_title(title),
      m_heading(new QLabel(this)),
      m_fileLabel(new QLabel(this)),
      m_pages(new QStackedWidget(this)),
      m_file(new FilePage(this)),
      m_tables(new TablesPage(this)),
      m_preview(new PreviewPage(m_place.copies, this)),
      m_back(new QPushButton(u"‹ A&trás"_s, this)),
      m_next(new QPushButton(this)),
      m_cancel(new QPushButton(this)) {
  setObjectName(u"movingAssistant"_s);
  setProperty(HelpDesk::topicProperty, u"traer-datos"_s);
  setWindowTitle(u"Importar – %1"_s.arg(title));
  new TitleSize(*m_heading, 1.5);
  m_heading->setObjectName(u"lblPaso"_s);
  m_fileLabel->setObjectName(u"lblArchivo"_s);
  m_fileLabel->setTextFormat(Qt::PlainText);
  m_fileLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  for (QWidget* page : {static_cast<QWidget*>(m_file), static_cast<QWidget*>(m_tables),
                        static_cast<QWidget*>(m_preview), MakeRunPage(), MakeReportPage()}) {
    m_pages->addWidget(page);
  }
  auto* top = new QHBoxLayout;
  top->addWidget(m_heading);
  top->addSpacing(fontMetrics().height());
  top->addWidget(m_fileLabel, 1);
  auto* right = new QVBoxLayout;
  right->addLayout(top);
  // Where a screen is too small for large letters nothing is out of reach.
  auto* ground = new QScrollArea(this);
  ground->setWidget(m_pages);
  ground->setWidgetResizable(true);
  ground->setFrameShape(QFrame::NoFrame);
  ground->setFocusPolicy(Qt::NoFocus);
  right->addWidget(ground, 1);
  auto* middle = new QHBoxLayout;
  m_steps = MakeSteps();
  middle->addWidget(m_steps);
  middle->addLayout(right, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  const QList<std::pair<QPushButton*, QString>> named = {
      {m_back, u"cmdAtras"_s}, {m_next, u"cmdSiguiente"_s}, {m_cancel, u"cmdCancelar"_s}};
  for (const auto& [button, name] : named) {
    button->setObjectName(name);
    button->setAutoDefault(false);
    buttons->addWidget(button);
  }
  m_next->setDefault(true);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(middle, 1);
  layout->addWidget(Line(this));
  layout->addLayout(buttons);
  Connect();
  constexpr int letters = 150;
  constexpr int lines = 44;
  resize(QSize(letters * fontMetrics().averageCharWidth(), lines * fontMetrics().height())
             .boundedTo(screen()->availableSize() * 9 / 10));
  ShowSteps();
  Go(File);
}

MovingAssistant::~MovingAssistant() = default;

QWidget* MovingAssistant::MakeSteps() {
  auto* steps = new QWidget(this);
  auto* layout = new QVBoxLayout(steps);
  layout->setContentsMargins({0, fontMetrics().height(), fontMetrics().height(), 0});
  for (qsizetype i = 0; i < titles.size(); ++i) {
    auto* label = new QLabel(steps);
    label->setMargin(fontMetrics().height() / 2);
    layout->addWidget(label);
    m_stepLabels.append(label);
  }
  layout->addStretch(1);
  auto* help = new QLabel(u"F1: ayuda de esta página"_s, steps);
  help->setForegroundRole(QPalette::PlaceholderText);
  layout->addWidget(help);
  return steps;
}

QWidget* MovingAssistant::MakeRunPage() {
  auto* page = new QWidget(this);
  m_state = new QLabel(page);
  m_state->setObjectName(u"lblProgreso"_s);
  m_state->setWordWrap(true);
  m_progress = new QProgressBar(page);
  m_progress->setObjectName(u"barProgreso"_s);
  m_progress->setAccessibleName(u"Progreso"_s);
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins({});
  layout->addWidget(m_state);
  layout->addWidget(m_progress);
  layout->addStretch(1);
  return page;
}

QWidget* MovingAssistant::MakeReportPage() {
  auto* page = new QWidget(this);
  m_report = new QPlainTextEdit(page);
  m_report->setObjectName(u"txtInforme"_s);
  m_report->setAccessibleName(u"Informe"_s);
  m_report->setReadOnly(true);
  m_report->setTabChangesFocus(true);
  m_report->setLineWrapMode(QPlainTextEdit::NoWrap);
  // As large as the program's other texts: the system's does not grow with them.
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPointSizeF(font().pointSizeF());
  m_report->setFont(fixed);
  auto* save = new QPushButton(u"&Guardar informe…"_s, page);
  save->setObjectName(u"cmdGuardarInforme"_s);
  save->setAutoDefault(false);
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins({});
  layout->addWidget(m_report, 1);
  layout->addWidget(save, 0, Qt::AlignRight);
  connect(save, &QPushButton::clicked, this, [this] { SaveReport(m_report->toPlainText() + u'\n'); });
  return page;
}

void MovingAssistant::Connect() {
  connect(m_file, &FilePage::FileWanted, this, &MovingAssistant::ReadFile);
  connect(m_tables, &TablesPage::Changed, this, &MovingAssistant::Update);
  connect(m_preview, &PreviewPage::Changed, this, &MovingAssistant::Update);
  connect(m_preview, &PreviewPage::Answered, this, [this](const QString& question, const QString& word) {
    m_answers.Give(question, word);
    ReadPreview();
  });
  connect(m_preview, &PreviewPage::ReportWanted, this, [this] { SaveReport(m_preview->Report().Text()); });
  connect(&m_task, &MovingTask::Progressed, this, &MovingAssistant::ShowProgress);
  connect(&m_task, &MovingTask::Failed, this, &MovingAssistant::ShowFailure);
  connect(&m_task, &MovingTask::Ended, this, &MovingAssistant::Update);
  connect(m_back, &QPushButton::clicked, this, &MovingAssistant::Back);
  connect(m_next, &QPushButton::clicked, this, &MovingAssistant::Next);
  connect(m_cancel, &QPushButton::clicked, this, &MovingAssistant::reject);
}

void MovingAssistant::Open(const QString& file) {
  m_file->SetFile(file);
}

moving::ImportWishes MovingAssistant::Wishes() const {
  moving::ImportWishes wishes;
  wishes.read = m_file->Wishes();
  wishes.names = m_tables->Names();
  wishes.answers = m_answers;
  wishes.skipsDeleted = m_tables->SkipsDeleted();
  return wishes;
}

void MovingAssistant::ReadFile() {
  m_isRead = false;
  m_isNew = true;
  m_file->ShowReading();
  m_task.Start([this, file = m_file->File(), wishes = m_file->Wishes()](TaskControl& control) -> MovingTask::Done {
    moving::ReadWishes all = wishes;
    all.sheet.clear();
    const auto outline =
        std::make_shared<moving::Outline>(moving::ReadOutline(file, all, [&control] { return control.IsCancelled(); }));
    return [this, outline] {
      m_outline = *outline;
      m_isRead = !m_outline.tables.isEmpty();
      m_file->Show(m_outline);
      Update();
    };
  });
  Update();
}

void MovingAssistant::ReadPreview() {
  m_preview->ShowText(u"Mirando qué entra… Todavía no se escribe nada."_s);
  m_task.Start([this, file = m_file->File(), place = m_place,
                wishes = Wishes()](TaskControl& control) mutable -> MovingTask::Done {
    wishes.isTrial = true;
    wishes.stop = [&control] { return control.IsCancelled(); };
    AddKnowledge(wishes);
    const auto brought = std::make_shared<Brought>(BringIn(file, place, wishes));
    return [this, brought] {
      m_preview->Show(brought->report);
      Update();
    };
  });
  Update();
}

void MovingAssistant::Bring() {
  ShowProgress(moving::ImportStep::Reading, 0, 0);
  m_task.Start([this, file = m_file->File(), place = m_place, wishes = Wishes(), accepts = m_preview->AcceptsLosses(),
                seal = m_preview->Report().seal](TaskControl& control) mutable -> MovingTask::Done {
    wishes.acceptsLosses = accepts;
    wishes.seen = seal;
    wishes.stop = [&control] { return control.IsCancelled(); };
    wishes.progress = [&control](moving::ImportStep step, qint64 done, qint64 total) {
      control.Tell(step, done, total);
    };
    AddKnowledge(wishes);
    const auto brought = std::make_shared<Brought>(BringIn(file, place, wishes));
    return [this, brought] { ShowReport(*brought); };
  });
  Update();
}

void MovingAssistant::Next() {
  switch (m_step) {
    case File:
      ShowTables();
      Go(Tables);
      break;
    case Tables:
      m_preview->Forget();
      Go(Preview);
      ReadPreview();
      break;
    case Preview:
      Go(Run);
      Bring();
      break;
    default:
      accept();
  }
}

// What was said of this file's tables stays.
void MovingAssistant::ShowTables() {
  const QString sheet = m_file->Wishes().sheet;
  if (std::exchange(m_isNew, false) || sheet != m_sheet) {
    m_sheet = sheet;
    m_answers = {};
    m_tables->Show(m_outline, sheet);
  }
}

void MovingAssistant::Back() {
  m_task.Cancel();
  Go(m_step == Preview ? Tables : File);
}

void MovingAssistant::Go(Step step) {
  m_step = step;
  m_pages->setCurrentIndex(step);
  m_heading->setText(titles[step]);
  for (qsizetype i = 0; i < titles.size(); ++i) {
    QLabel& label = *m_stepLabels[i];
    label.setText(i < step ? u"✓  %1"_s.arg(titles[i]) : u"%1  %2"_s.arg(QString::number(i + 1), titles[i]));
    QFont font = label.font();
    font.setBold(i == step);
    label.setFont(font);
    label.setAutoFillBackground(i == step);
    label.setBackgroundRole(i == step ? QPalette::Base : QPalette::NoRole);
    label.setForegroundRole(i > step ? QPalette::PlaceholderText : QPalette::WindowText);
  }
  Update();
}

bool MovingAssistant::MayGoOn() const {
  switch (m_step) {
    case File:
      return m_isRead && !IsBusy();
    case Tables:
      return m_tables->HasMatch();
    case Preview:
      return !IsBusy() && m_preview->MayBring();
    default:
      return m_step == Report;
  }
}

void MovingAssistant::Update() {
  const QFileInfo file(m_file->File());
  const QLocale spanish(QLocale::Spanish, QLocale::Spain);
  m_fileLabel->setText(m_isRead
                           ? u"%1 · %2 · %3, %4"_s.arg(
                                 file.fileName(), spanish.formattedDataSize(file.size(), 1, QLocale::DataSizeSIFormat),
                                 texts::Counted(m_outline.tables.size(), u"tabla"_s, u"tablas"_s),
                                 texts::Counted(m_outline.Rows(), u"registro"_s, u"registros"_s))
                           : QString());
  const bool isOver = m_step == Report;
  m_back->setVisible(!isOver);
  m_back->setEnabled(m_step == Tables || m_step == Preview);
  m_next->setText(m_step == Preview ? u"Tr&aer los datos"_s : isOver ? u"&Cerrar"_s : u"&Siguiente ›"_s);
  m_next->setVisible(m_step != Run);
  m_next->setEnabled(MayGoOn());
  m_cancel->setText(m_step == Run ? u"&Interrumpir"_s : u"&Cancelar"_s);
  m_cancel->setVisible(!isOver);
}

void MovingAssistant::ShowProgress(moving::ImportStep step, qint64 done, qint64 total) {
  if (m_step != Run) {
    return;
  }
  const QLocale spanish(QLocale::Spanish, QLocale::Spain);
  const QString counted = spanish.toString(done);
  QString text = done == 0 ? u"Haciendo la copia de antes…"_s : u"Leyendo: %1 registros"_s.arg(counted);
  if (step == moving::ImportStep::Comparing) {
    text = u"Comparando con lo que hay aquí…"_s;
  } else if (step == moving::ImportStep::Writing) {
    text = u"Escribiendo: %1 de %2 registros"_s.arg(counted, spanish.toString(total));
  }
  m_state->setText(text + u"\nSe puede interrumpir: entra todo, o nada. Mientras tanto nadie más puede guardar."_s);
  constexpr int parts = 1000;
  const bool isKnown = step == moving::ImportStep::Writing && total > 0;
  m_progress->setRange(0, isKnown ? parts : 0);
  m_progress->setValue(isKnown ? static_cast<int>(done * parts / total) : 0);
}

void MovingAssistant::ShowFailure(const automation::Error& error) {
  const bool isStopped = error.Number() == adodb::Stopped;
  if (m_step == Run) {
    Go(Preview);
    m_preview->ShowText(u"No se ha escrito nada. Vuelva a mirar qué entra."_s);
    if (!isStopped) {
      PlainBox(QMessageBox::Warning, m_title, error.Description(), QMessageBox::Ok, this).exec();
    }
    ReadPreview();
  } else if (m_step == Preview && !isStopped) {
    m_preview->ShowText(error.Description(), true);
  } else if (m_step == File && !isStopped) {
    m_file->ShowFault(error.Description());
  }
  Update();
}

void MovingAssistant::ShowReport(const Brought& brought) {
  m_isBrought = brought.report.isWritten;
  QString text = brought.report.Text();
  if (m_isBrought) {
    m_tables->Remember();
    text += u"\nAntes se ha hecho la copia «%1».\nCon ella se deshace todo: kel-host restaurar «ARCHIVO».\n"_s.arg(
        brought.copy);
    text += brought.reportFile.isEmpty() ? QString() : u"Este informe está en «%1».\n"_s.arg(brought.reportFile);
  }
  m_report->setPlainText(text);
  Go(Report);
  m_report->setFocus();
}

void MovingAssistant::SaveReport(const QString& text) {
  const QString path =
      QFileDialog::getSaveFileName(this, u"Guardar el informe"_s, u"informe.txt"_s, u"Textos (*.txt)"_s);
  if (path.isEmpty()) {
    return;
  }
  try {
    WriteReport(path, text);
  } catch (const automation::Error& error) {
    PlainBox(QMessageBox::Warning, m_title, error.Description(), QMessageBox::Ok, this).exec();
  }
}

// While data are written the first wish to leave is only to stop.
void MovingAssistant::reject() {
  if (m_step == Run && IsBusy()) {
    m_task.Cancel();
  } else if (m_step == Report) {
    accept();
  } else {
    m_task.Cancel();
    QDialog::reject();
  }
}

void MovingAssistant::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  ShowSteps();
}

// Beside a narrow page there is no room for them.
void MovingAssistant::ShowSteps() {
  constexpr int roomy = 100;
  m_steps->setVisible(width() > roomy * fontMetrics().averageCharWidth());
}

}  // namespace host
