#include "host/mailing/window/MailingWindow.h"

#include "database/Database.h"
#include "host/help/HelpDesk.h"
#include "host/mailing/pieces/Choices.h"
#include "host/mailing/pieces/SheetUse.h"
#include "host/mailing/window/LabelPanel.h"
#include "host/mailing/window/LetterPanel.h"
#include "host/mailing/window/PeoplePanel.h"
#include "host/mailing/window/PeopleTable.h"
#include "host/mailing/window/PostingPanel.h"
#include "host/mailing/window/PreviewPanel.h"
#include "host/mailing/window/SelectionCommands.h"
#include "host/services/PlainBox.h"
#include "platform/contract/cConstNodo.h"
#include "platform/text/Counted.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>
#include <QThread>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString lastSelection = u"Correo/Seleccion"_s;
const QString lastLetter = u"Correo/Carta"_s;
const QString lastSheet = u"Correo/Hoja"_s;

}  // namespace

MailingWindow::MailingWindow(MailingContext context, QWidget* parent)
    : QMainWindow(parent),
      m_context(std::move(context)),
      m_people(new PeoplePanel(this)),
      m_letter(new LetterPanel(this)),
      m_label(new LabelPanel(this)),
      m_posting(new PostingPanel(this)),
      m_notices(new NoticeBox(this)),
      m_preview(new PreviewPanel(this)),
      m_what(new QStackedWidget(this)),
      m_reader(
          [connectionString = m_context.connectionString] { return database::CreateConnection(connectionString); }) {
  setObjectName(u"mailingWindow"_s);
  setProperty(HelpDesk::topicProperty, u"cartas-y-etiquetas"_s);
  m_selections = new SelectionCommands(m_context, m_reader, *m_people, *this);
  const QSettings settings;
  m_wantedLetter = settings.value(lastLetter).toInt();
  m_wantedSheet = settings.value(lastSheet).toInt();
  MakeActions();
  MakeMenus();
  MakeLayout();
  MakeStatusBar();
  Connect();
  ShowPage(Page::Letters);
  m_preview->ShowText(u"Leyendo…"_s);
  ReadChoices();
}

MailingWindow::~MailingWindow() {
  QSettings settings;
  settings.setValue(u"Correo/Geometria"_s, saveGeometry());
  if (m_hasChoices) {
    settings.setValue(lastSelection, m_people->Chosen().id);
    settings.setValue(lastLetter, m_letter->Letter());
    settings.setValue(lastSheet, m_label->Sheet());
  }
}

void MailingWindow::Connect() {
  connect(m_people, &PeoplePanel::SelectionWanted, this, &MailingWindow::WantSelection);
  connect(m_people, &PeoplePanel::ConditionsChanged, this, [this] {
    ReadPeople();
    ReadMailing();
  });
  connect(m_people, &PeoplePanel::TicksChanged, this, &MailingWindow::ReadMailing);
  connect(&m_people->Table(), &PeopleTable::Reached, m_preview, &PreviewPanel::GoTo);
  connect(m_preview, &PreviewPanel::PersonReached, &m_people->Table(), &PeopleTable::GoTo);
  connect(m_letter, &LetterPanel::Changed, this, &MailingWindow::ReadMailing);
  connect(m_label, &LabelPanel::Changed, this, &MailingWindow::ReadMailing);
  connect(m_label, &LabelPanel::FontChosen, this, &MailingWindow::KeepFont);
  connect(m_letter, &LetterPanel::EditWanted, this, [this](int id) { EditRecord(cConstNodo().CartasModelo(), id); });
  connect(m_label, &LabelPanel::EditWanted, this, [this](int id) { EditRecord(cConstNodo().Etiquetas(), id); });
  connect(m_posting, &PostingPanel::Changed, this, &MailingWindow::ReadMailing);
  connect(m_posting, &PostingPanel::OrderChanged, this, [this] {
    ReadPeople();
    ReadMailing();
  });
  connect(m_notices, &NoticeBox::Followed, this, &MailingWindow::Follow);
  connect(m_selections, &SelectionCommands::Written, this, [this](int selection) {
    QSettings().setValue(lastSelection, selection);
    m_people->Take({});
    m_hasChoices = false;
    ReadChoices();
  });
  connect(&m_reader, &BackgroundReader::Failed, this, &MailingWindow::ShowFailure);
  connect(&m_reader, &BackgroundReader::BusyChanged, this, &MailingWindow::UpdateState);
  connect(&m_run, &MailingRun::Progressed, this, &MailingWindow::ShowProgress);
  connect(&m_run, &MailingRun::Finished, this, &MailingWindow::ShowResult);
  connect(&m_run, &MailingRun::Failed, this, &MailingWindow::ShowRunFailure);
}

void MailingWindow::Open(Page page, int id) {
  if (id != 0) {
    (page == Page::Letters ? m_wantedLetter : m_wantedSheet) = id;
  }
  ShowPage(page);
  if (m_hasChoices && id != 0) {
    page == Page::Letters ? m_letter->Choose(id) : m_label->Choose(id);
  }
}

void MailingWindow::ShowPage(Page page) {
  m_page = page;
  const bool isLetters = page == Page::Letters;
  m_what->setCurrentIndex(isLetters ? 0 : 1);
  // The page in front alone says how high both are.
  m_letter->setSizePolicy(QSizePolicy::Preferred, isLetters ? QSizePolicy::Preferred : QSizePolicy::Ignored);
  m_label->setSizePolicy(QSizePolicy::Preferred, isLetters ? QSizePolicy::Ignored : QSizePolicy::Preferred);
  m_posting->SetPiece(isLetters ? u"carta"_s : u"etiqueta"_s);
  (isLetters ? m_lettersPage : m_labelsPage)->setChecked(true);
  setWindowTitle(u"%1 – %2%3"_s.arg(isLetters ? u"Cartas"_s : u"Etiquetas"_s, m_context.title,
                                    m_context.demonstration ? u" (Demostración)"_s : QString()));
  ForgetMailing(u"Leyendo…"_s);
  ReadMailing();
}

void MailingWindow::ReadChoices() {
  m_reader.Run(Topic::Choices, [this, user = m_context.user.id](adodb::Connection& connection) {
    const auto choices = std::make_shared<Choices>(host::ReadChoices(connection, user));
    return [this, choices] { TakeChoices(*choices); };
  });
}

void MailingWindow::TakeChoices(const Choices& choices) {
  m_people->SetChoices(choices);
  m_selections->SetChoices(choices.selections);
  m_letter->SetChoices(choices.letters, choices.letterheads);
  m_label->SetChoices(choices, !m_context.readOnly);
  m_letter->Choose(std::exchange(m_wantedLetter, 0));
  m_label->Choose(std::exchange(m_wantedSheet, 0));
  if (std::exchange(m_hasChoices, true)) {
    ReadPeople();
    ReadMailing();
    return;
  }
  const int last = QSettings().value(lastSelection).toInt();
  const bool isThere = std::ranges::any_of(choices.selections, [&](const StoredSelection& s) { return s.id == last; });
  WantSelection(isThere ? last : choices.selections.isEmpty() ? 0 : choices.selections.constFirst().id);
}

// Without a saved selection everybody is chosen.
void MailingWindow::WantSelection(int id) {
  if (!m_selections->MayLeave()) {
    m_people->ShowSaved(m_people->Chosen().id);
    return;
  }
  m_reader.Run(Topic::Selection, [this, id, user = m_context.user.id](adodb::Connection& connection) {
    const SavedSelection selection = id == 0 ? SavedSelection() : ReadSelection(connection, id, user);
    return [this, selection] {
      m_people->Take(selection);
      ReadPeople();
      ReadMailing();
    };
  });
}

void MailingWindow::ReadPeople() {
  m_reader.Run(
      Topic::People, [this, selection = m_people->Chosen(), order = m_posting->Order()](adodb::Connection& connection) {
        const auto people = std::make_shared<std::vector<ListedPerson>>(ListPeople(connection, selection, order));
        return [this, people] { m_people->SetPeople(std::move(*people)); };
      });
}

void MailingWindow::ReadMailing() {
  m_selections->Update();
  if (!m_hasChoices) {
    return;
  }
  if (m_page == Page::Letters) {
    ReadLetters();
  } else {
    ReadLabels();
  }
}

LetterWish MailingWindow::WishedLetters() const {
  LetterWish wish;
  wish.chosen = m_people->Chosen();
  m_posting->Fill(wish);
  m_letter->Fill(wish);
  return wish;
}

LabelWish MailingWindow::WishedLabels() const {
  LabelWish wish;
  wish.chosen = m_people->Chosen();
  m_posting->Fill(wish);
  m_label->Fill(wish);
  return wish;
}

void MailingWindow::ReadLetters() {
  if (m_letter->Letter() == 0) {
    ForgetMailing(u"No hay ninguna carta modelo. Agregue una en la ventana principal, en «Cartas modelo»."_s);
    return;
  }
  m_reader.Run(Topic::Mailing, [this, wish = WishedLetters(), user = m_context.user.id,
                                window = thread()](adodb::Connection& connection) {
    const auto letters = std::make_shared<LetterMailing>(connection, wish, user);
    const QList<std::size_t> seen = letters->Fingerprints();
    letters->MoveTo(window);
    return [this, letters, seen] { Take(letters, seen); };
  });
}

void MailingWindow::ReadLabels() {
  if (m_label->Sheet() == 0) {
    ForgetMailing(u"No hay ninguna hoja de etiquetas. Agregue una en la ventana principal."_s);
    return;
  }
  m_reader.Run(Topic::Mailing, [this, wish = WishedLabels(), user = m_context.user.id](adodb::Connection& connection) {
    const auto labels = std::make_shared<LabelMailing>(connection, wish, user);
    const QList<std::size_t> seen = labels->Fingerprints();
    return [this, labels, seen] { Take(labels, seen); };
  });
}

void MailingWindow::Take(const std::shared_ptr<LetterMailing>& letters, const QList<std::size_t>& seen) {
  m_seen = seen;
  m_pieces = letters->Count();
  m_letter->Adapt(*letters);
  TakeNotes(letters->Notes(), letters->Faults());
  m_people->SetPieces(texts::Counted(m_pieces, u"carta"_s, u"cartas"_s));
  if (m_pieces == 0) {
    m_preview->ShowText(u"No hay nadie a quien escribir."_s);
  } else {
    m_preview->Show(letters);
  }
  UpdateState();
}

void MailingWindow::Take(const std::shared_ptr<LabelMailing>& labels, const QList<std::size_t>& seen) {
  m_seen = seen;
  m_pieces = labels->Labels();
  m_label->Tell(*labels);
  TakeNotes(labels->Notes(), labels->Faults());
  m_people->SetPieces(texts::Counted(m_pieces, u"etiqueta"_s, u"etiquetas"_s));
  if (m_pieces == 0) {
    m_preview->ShowText(u"No hay nadie a quien escribir."_s);
  } else {
    m_preview->Show(labels, WishedLabels().start);
  }
  UpdateState();
}

void MailingWindow::TakeNotes(const MailingNotes& notes, const QStringList& faults) {
  m_faults = faults;
  m_people->SetNotes(notes);
  m_notices->Show(NoticesOf(notes, faults, m_page == Page::Letters ? m_letter->Missing() : QStringList()));
}

void MailingWindow::ForgetMailing(const QString& why) {
  m_pieces = 0;
  m_seen.clear();
  m_faults.clear();
  m_notices->Show({});
  m_people->SetPieces({});
  m_preview->ShowText(why);
  UpdateState();
}

void MailingWindow::ShowFailure(Topic topic, const automation::Error& error) {
  switch (topic) {
    case Topic::Selection:
      m_people->TakeNobody();
      [[fallthrough]];
    case Topic::People:
      m_people->SetError(error.Description());
      ForgetMailing(error.Description());
      break;
    case Topic::Printers:
      Say(error.Description());
      break;
    case Topic::Write:
      Say(error.Description());
      ReadChoices();
      break;
    default:
      ForgetMailing(error.Description());
  }
}

void MailingWindow::KeepFont(int sheet, const documents::LabelFont& font) {
  m_reader.Run(Topic::Write, [this, sheet, font](adodb::Connection& connection) {
    SaveLabelFont(connection, sheet, font);
    return [this] { ReadMailing(); };
  });
}

void MailingWindow::EditRecord(int node, int id) {
  if (id != 0 && m_context.openRecord) {
    m_context.openRecord(node, id);
    ReadChoices();
  }
}

void MailingWindow::Follow(const Notice& notice) {
  if (notice.way == Notice::Way::People) {
    m_people->ShowOnly(notice.people);
  } else if (QWidget* field = m_letter->MissingField()) {
    field->setFocus();
  }
}

bool MailingWindow::AcceptsFaults() {
  if (m_faults.isEmpty() || m_faults == m_accepted) {
    return true;
  }
  constexpr qsizetype most = 12;
  QStringList lines = m_faults.mid(0, most);
  if (m_faults.size() > most) {
    lines.append(u"Y %1 más."_s.arg(m_faults.size() - most));
  }
  PlainBox box(QMessageBox::Warning, m_context.title, u"Hay algo que conviene corregir antes:"_s,
               QMessageBox::Yes | QMessageBox::Cancel, this);
  box.SetFurtherText(lines.join(u'\n'));
  box.button(QMessageBox::Yes)->setText(u"&Dejarlo así"_s);
  box.button(QMessageBox::Cancel)->setText(u"&Cancelar"_s);
  box.setDefaultButton(QMessageBox::Cancel);
  if (box.exec() != QMessageBox::Yes) {
    return false;
  }
  m_accepted = m_faults;
  return true;
}

void MailingWindow::Make(OutputOrder::Kind kind) {
  if (!AcceptsFaults()) {
    return;
  }
  const QString target = AskForTarget(kind);
  if (!target.isEmpty()) {
    Start({.kind = kind, .target = target, .printing = {}, .seen = {}, .accepted = {}});
  }
}

// Printers and their trays are asked for beside the window's work: a print server may be slow.
void MailingWindow::AskForPrinter() {
  if (!AcceptsFaults()) {
    return;
  }
  m_state->setText(u"Buscando impresoras…"_s);
  m_reader.Run(Topic::Printers, [this](adodb::Connection& /*connection*/) {
    const QList<KnownPrinter> printers = KnownPrinters();
    return [this, printers] {
      m_state->clear();
      PrintOn(printers);
    };
  });
}

void MailingWindow::PrintOn(const QList<KnownPrinter>& printers) {
  const bool isLetters = m_page == Page::Letters;
  PrintDialog dialog(printers, isLetters ? 0 : m_preview->PartCount(), isLetters, this);
  if (dialog.exec() == QDialog::Accepted) {
    m_printedSheet = isLetters ? 0 : m_label->Sheet();
    Start({.kind = OutputOrder::Kind::Printer, .target = {}, .printing = dialog.Wish(), .seen = {}, .accepted = {}});
  }
}

void MailingWindow::Start(OutputOrder order) {
  order.seen = m_seen;
  order.accepted = m_faults;
  const QString connectionString = m_context.connectionString;
  const int user = m_context.user.id;
  if (m_page == Page::Letters) {
    m_run.Start([=, wish = WishedLetters()](RunControl& control) {
      return MakeLetters(connectionString, wish, user, order, control);
    });
  } else {
    m_run.Start([=, wish = WishedLabels()](RunControl& control) {
      return MakeLabels(connectionString, wish, user, order, control);
    });
  }
  ShowProgress(0, 0);
  UpdateState();
}

void MailingWindow::ShowProgress(int done, int parts) {
  m_progress->setRange(0, parts);
  m_progress->setValue(done);
  m_state->setText(parts == 0 ? u"Leyendo…"_s : u"Escribiendo: %1 de %2"_s.arg(done).arg(parts));
}

void MailingWindow::ShowResult(const RunResult& result) {
  QString text = result.text;
  if (result.differing > 0) {
    text += result.differing == 1
                ? u" Una no es como en la vista previa: los datos han cambiado."_s
                : u" %1 no son como en la vista previa: los datos han cambiado."_s.arg(result.differing);
    ReadPeople();
    ReadMailing();
  }
  m_state->setText(text);
  UpdateState();
  if (result.lastLabel > 0) {
    AskHowTheyCameOut(result.lastLabel);
  }
}

// The next print begins where this one ended, if it is as it should be.
void MailingWindow::AskHowTheyCameOut(int lastLabel) {
  PlainBox box(QMessageBox::Question, m_context.title, u"¿Han salido bien las etiquetas?"_s,
               QMessageBox::Yes | QMessageBox::No, this);
  box.SetFurtherText(u"Con «Sí», la próxima vez se propone empezar detrás de la última que se ha usado."_s);
  if (box.exec() == QMessageBox::Yes && !m_context.readOnly) {
    m_reader.Run(Topic::Write, [this, sheet = m_printedSheet, lastLabel](adodb::Connection& connection) {
      RememberLastLabel(connection, sheet, lastLabel);
      return [this] {
        m_label->Forget();
        ReadChoices();
      };
    });
  }
}

void MailingWindow::ShowRunFailure(const automation::Error& error) {
  m_state->setText(error.Description());
  UpdateState();
  Say(error.Description());
}

void MailingWindow::Say(const QString& text) {
  PlainBox(QMessageBox::Warning, m_context.title, text, QMessageBox::Ok, this).exec();
}

void MailingWindow::UpdateState() {
  const bool isRunning = m_run.IsRunning();
  const bool mayMake = m_pieces > 0 && !isRunning && !m_reader.IsBusy();
  const bool isLetters = m_page == Page::Letters;
  m_print->setEnabled(mayMake);
  m_pdf->setEnabled(mayMake);
  m_pdfPerPerson->setEnabled(mayMake && isLetters);
  m_rtfPerPerson->setEnabled(mayMake && isLetters);
  m_pdfPerPerson->setVisible(isLetters);
  m_rtfPerPerson->setVisible(isLetters);
  m_progress->setVisible(isRunning);
  m_cancel->setVisible(isRunning);
  m_selections->Update();
}

void MailingWindow::closeEvent(QCloseEvent* event) {
  if (m_run.IsRunning()) {
    PlainBox box(QMessageBox::Question, m_context.title, u"Todavía se está escribiendo. ¿Desea interrumpirlo?"_s,
                 QMessageBox::Yes | QMessageBox::No, this);
    box.setDefaultButton(QMessageBox::No);
    if (box.exec() != QMessageBox::Yes) {
      event->ignore();
      return;
    }
    m_run.Cancel();
  }
  if (!m_selections->MayLeave()) {
    event->ignore();
    return;
  }
  QMainWindow::closeEvent(event);
}

}  // namespace host
