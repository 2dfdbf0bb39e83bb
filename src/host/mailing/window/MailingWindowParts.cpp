// What the window is made of: actions, menus, layout, status bar, and what it asks for files and folders.

#include "host/look/ScrolledColumn.h"
#include "host/mailing/window/ElidedLabel.h"
#include "host/mailing/window/LabelPanel.h"
#include "host/mailing/window/LetterPanel.h"
#include "host/mailing/window/MailingWindow.h"
#include "host/mailing/window/PeoplePanel.h"
#include "host/mailing/window/PostingPanel.h"
#include "host/mailing/window/PreviewPanel.h"
#include "host/mailing/window/SelectionCommands.h"
#include "platform/text/AsItStands.h"

#include <QAction>
#include <QActionGroup>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString lastFolder = u"Correo/Carpeta"_s;

}  // namespace

QAction* MailingWindow::AddAction(const char* name, const QString& text, const QString& brief, const QString& icon,
                                  const QKeySequence& key) {
  auto* action = new QAction(QIcon::fromTheme(icon), text, this);
  action->setObjectName(QString::fromLatin1(name));
  action->setIconText(brief);
  action->setShortcut(key);
  return action;
}

void MailingWindow::MakeActions() {
  m_lettersPage = AddAction("actCartas", u"&Cartas"_s, u"Cartas"_s, u"document-edit"_s, QKeySequence(u"Ctrl+1"_s));
  m_labelsPage = AddAction("actEtiquetas", u"&Etiquetas"_s, u"Etiquetas"_s, u"tag"_s, QKeySequence(u"Ctrl+2"_s));
  m_print =
      AddAction("actImprimir", u"&Imprimir…"_s, u"Imprimir"_s, u"document-print"_s, QKeySequence(QKeySequence::Print));
  m_pdf = AddAction("actPdf", u"&Guardar como PDF…"_s, u"Guardar PDF"_s, u"document-save"_s, QKeySequence());
  m_pdfPerPerson =
      AddAction("actPdfPorPersona", u"Un P&DF por persona…"_s, u"Un PDF por persona"_s, u"document-multiple"_s, {});
  m_rtfPerPerson =
      AddAction("actRtfPorPersona", u"Un &RTF por persona…"_s, u"Un RTF por persona"_s, u"document-export"_s, {});
  m_calibrate = AddAction("actCalibrar", u"Cali&brar la impresora…"_s, u"Calibrar la impresora"_s, u"configure"_s, {});
  m_refresh = AddAction("actLeerDeNuevo", u"&Leer de nuevo"_s, u"Leer de nuevo"_s, u"view-refresh"_s,
                        QKeySequence(QKeySequence::Refresh));
  auto* pages = new QActionGroup(this);
  for (QAction* page : {m_lettersPage, m_labelsPage}) {
    page->setCheckable(true);
    pages->addAction(page);
  }
  connect(m_lettersPage, &QAction::triggered, this, [this] { ShowPage(Page::Letters); });
  connect(m_labelsPage, &QAction::triggered, this, [this] { ShowPage(Page::Labels); });
  connect(m_print, &QAction::triggered, this, &MailingWindow::AskForPrinter);
  connect(m_pdf, &QAction::triggered, this, [this] { Make(OutputOrder::Kind::Pdf); });
  connect(m_pdfPerPerson, &QAction::triggered, this, [this] { Make(OutputOrder::Kind::PdfPerPerson); });
  connect(m_rtfPerPerson, &QAction::triggered, this, [this] { Make(OutputOrder::Kind::RtfPerPerson); });
  connect(m_calibrate, &QAction::triggered, this, [this] { m_context.calibrate(); });
  m_calibrate->setVisible(static_cast<bool>(m_context.calibrate));
  connect(m_refresh, &QAction::triggered, this, &MailingWindow::ReadChoices);
}

void MailingWindow::MakeMenus() {
  QMenu* file = menuBar()->addMenu(u"&Archivo"_s);
  file->addActions({m_print, m_pdf, m_pdfPerPerson, m_rtfPerPerson});
  file->addSeparator();
  file->addAction(m_calibrate);
  file->addSeparator();
  QAction* close = file->addAction(u"&Cerrar"_s, this, &QWidget::close);
  close->setShortcut(QKeySequence::Close);
  m_selections->FillMenu(*menuBar()->addMenu(u"&Selección"_s));
  QMenu* view = menuBar()->addMenu(u"&Ver"_s);
  view->addActions({m_lettersPage, m_labelsPage});
  view->addSeparator();
  m_preview->FillMenu(*view);
  view->addSeparator();
  view->addAction(m_refresh);
  if (!m_context.helpFile.isEmpty()) {
    QAction* help = menuBar()->addMenu(u"Ay&uda"_s)->addAction(u"&Contenido"_s);
    help->setShortcut(QKeySequence::HelpContents);
    connect(help, &QAction::triggered, this, [this] {
      if (!QDesktopServices::openUrl(QUrl::fromLocalFile(m_context.helpFile))) {
        Say(u"No hay ningún programa que abra la ayuda «%1»."_s.arg(m_context.helpFile));
      }
    });
  }
  m_bar = addToolBar(u"Cartas y etiquetas"_s);
  m_bar->setObjectName(u"barraCorreo"_s);
  m_bar->setMovable(false);
  m_bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  m_bar->addActions({m_lettersPage, m_labelsPage});
  m_bar->addSeparator();
  m_bar->addActions({m_print, m_pdf, m_pdfPerPerson, m_rtfPerPerson});
  m_bar->addSeparator();
  m_bar->addAction(m_calibrate);
}

void MailingWindow::MakeLayout() {
  m_what->addWidget(m_letter);
  m_what->addWidget(m_label);
  m_what->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
  auto* fields = new QWidget(this);
  auto* rows = new QVBoxLayout(fields);
  rows->setContentsMargins({});
  rows->addWidget(m_people, 1);
  rows->addWidget(m_what);
  rows->addWidget(m_posting);
  auto* left = new QWidget(this);
  auto* column = new QVBoxLayout(left);
  column->addWidget(new ScrolledColumn(fields, left), 1);
  column->addWidget(m_notices);
  auto* splitter = new QSplitter(this);
  splitter->setChildrenCollapsible(false);
  splitter->addWidget(left);
  splitter->addWidget(m_preview);
  splitter->setStretchFactor(1, 1);
  setCentralWidget(splitter);
  m_notices->ComeAfter(*m_posting->LastField());
  if (!restoreGeometry(QSettings().value(u"Correo/Geometria"_s).toByteArray())) {
    resize(screen()->availableSize() * 4 / 5);
  }
}

void MailingWindow::MakeStatusBar() {
  m_state = new ElidedLabel(this);
  m_state->setObjectName(u"lblEstado"_s);
  m_progress = new QProgressBar(this);
  m_progress->setObjectName(u"progreso"_s);
  m_progress->setAccessibleName(u"Progreso"_s);
  m_progress->setTextVisible(false);
  m_cancel = new QPushButton(u"&Cancelar"_s, this);
  m_cancel->setObjectName(u"cmdCancelar"_s);
  connect(m_cancel, &QPushButton::clicked, &m_run, &MailingRun::Cancel);
  auto* session =
      new QLabel(u"Usuario: %1   ·   Base de datos: %2"_s.arg(m_context.userName, m_context.database), this);
  session->setTextFormat(Qt::PlainText);
  session->setToolTip(texts::AsItStands(m_context.database));
  statusBar()->addWidget(m_state, 1);
  statusBar()->addWidget(m_progress);
  statusBar()->addWidget(m_cancel);
  statusBar()->addPermanentWidget(session);
}

QString MailingWindow::AskForTarget(OutputOrder::Kind kind) {
  const bool isFile = kind == OutputOrder::Kind::Pdf;
  QFileDialog dialog(this, isFile ? u"Guardar como PDF"_s : u"Carpeta para un archivo por persona"_s);
  dialog.setObjectName(isFile ? u"dlgPdf"_s : u"dlgCarpeta"_s);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setAcceptMode(isFile ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(isFile ? QFileDialog::AnyFile : QFileDialog::Directory);
  // Where the last ones went, of this session or an earlier one.
  QSettings settings;
  if (const QFileInfo last(settings.value(lastFolder).toString()); last.isDir()) {
    dialog.setDirectory(last.filePath());
  }
  if (isFile) {
    QString name = m_page == Page::Letters ? m_letter->Name() : m_label->Name();
    dialog.setNameFilter(u"PDF (*.pdf)"_s);
    dialog.setDefaultSuffix(u"pdf"_s);
    dialog.selectFile(name.replace(u'/', u'-'));
  } else {
    dialog.setOption(QFileDialog::ShowDirsOnly);
  }
  if (dialog.exec() != QDialog::Accepted) {
    return {};
  }
  const QString target = dialog.selectedFiles().value(0);
  settings.setValue(lastFolder, isFile ? QFileInfo(target).absolutePath() : target);
  return target;
}

}  // namespace host
