// The letter editor: opening a letter of 5 MB until it is painted beside reading it, a key in its middle and in a long
// table, a new letter beside the bank dialog, empty and with a bank of 10,000 branches.
//
// Argument `--once`: a letter of 5 MB is opened, typed into and saved, and nothing else, so that whole processes of two
// builds can be compared. Each step's processor time is told.

#include "banking/Dialogs.h"
#include "documents/rtf/Rtf.h"
#include "letters/BigLetter.h"
#include "letters/Dialogs.h"
#include "letters/editor/LetterEdit.h"
#include "platform/adodb/Statement.h"
#include "support/Office.h"
#include "support/Race.h"
#include "support/Stopwatch.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTextDocument>

#include <algorithm>
#include <cstdio>

using namespace framework;
using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype letterBytes = 5'000'000;
constexpr int rounds = 7;
constexpr int keys = 50;
constexpr int tableRows = 2'000;
constexpr int branches = 10'000;

void Paint(MaintenanceForm& dialog) {
  dialog.setWindowState(Qt::WindowNoState);
  dialog.resize(1600, 1000);
  dialog.show();
  QCoreApplication::sendPostedEvents();
  dialog.grab();
}

void Open(std::unique_ptr<MaintenanceForm> dialog) {
  dialog->Load();
  Paint(*dialog);
  dialog->Unload();
}

void TypeInTheMiddle() {
  const auto dialog = letters::CreateFrmCartaModelo();
  dialog->Load();
  Paint(*dialog);
  auto* letter = dialog->findChild<letters::LetterEdit*>(u"rtfCarta"_s);
  QTextCursor middle = letter->textCursor();
  middle.setPosition(letter->document()->characterCount() / 2);
  const double moving = bench::Milliseconds([&] {
    letter->setTextCursor(middle);
    dialog->grab();
  });
  std::vector<double> times;
  for (int i = 0; i < keys; ++i) {
    times.push_back(bench::Milliseconds([&] {
      QKeyEvent key(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, u"x"_s);
      QApplication::sendEvent(letter, &key);
      dialog->grab();
    }));
  }
  std::printf(
      "Going to its middle: %.1f ms; a key typed there until it is painted: %.1f ms (at most 50), slowest %.1f\n",
      moving, bench::Median(times), *std::max_element(times.begin(), times.end()));
  dialog->Unload();
}

void Type(letters::LetterEdit& letter) {
  QKeyEvent key(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, u"x"_s);
  QApplication::sendEvent(&letter, &key);
  letter.grab();
}

/// The letter alone, in the dialog's width.
void Show(letters::LetterEdit& letter, const QString& content) {
  letter.SetTextWidth(letters::Twips{8600});
  letter.resize(900, 1000);
  letter.Load(content);
  letter.show();
  letter.grab();
}

void GoToTheMiddle(letters::LetterEdit& letter) {
  QTextCursor middle = letter.textCursor();
  middle.setPosition(letter.document()->characterCount() / 2);
  letter.setTextCursor(middle);
  letter.grab();
}

void TypeInATable() {
  letters::LetterEdit letter;
  const QString content = QString::fromLatin1(bench::LongTable(tableRows));
  const double loading = bench::Milliseconds([&] { Show(letter, content); });
  GoToTheMiddle(letter);
  std::vector<double> times;
  std::vector<double> processor;
  for (int i = 0; i < keys; ++i) {
    const bench::Stopwatch watch;
    Type(letter);
    const bench::Elapsed passed = watch.Read();
    times.push_back(passed.clock);
    processor.push_back(passed.processor);
  }
  std::printf(
      "A table of %d rows: load and paint %.1f ms; a key in its middle until it is painted: %.1f ms (at most 30), "
      "slowest %.1f; processor %.1f\n",
      tableRows, loading, bench::Median(times), *std::max_element(times.begin(), times.end()),
      bench::Median(processor));
}

void Step(const char* what, const bench::Work& work) {
  const bench::Stopwatch watch;
  work();
  std::printf("%-26s %8.1f ms\n", what, watch.Read().processor);
}

void OpenTypeAndSave(const QString& content) {
  constexpr int typed = 10;
  letters::LetterEdit letter;
  Step("opening and painting", [&] { Show(letter, content); });
  Step("going to the middle", [&] { GoToTheMiddle(letter); });
  Step("ten keys, each painted", [&] {
    for (int i = 0; i < typed; ++i) {
      Type(letter);
    }
  });
  QString written;
  Step("saving", [&] { written = letter.Content(); });
  if (!written.contains(u"xxxxxxxxxx"_s)) {
    qFatal("what was typed is not in what was saved");
  }
}

int AddBank(adodb::Connection& connection) {
  adodb::Transaction transaction(connection);
  adodb::Execute(connection, u"INSERT INTO Bancos(Numero,Nombre) VALUES('9999','Grande')");
  const int bank = adodb::Execute(connection, u"SELECT MAX(IDBanco) AS N FROM Bancos")->Field(0).toInt();
  for (int i = 0; i < branches; ++i) {
    adodb::Execute(connection, u"INSERT INTO Sucursales(codBanco,Codigo,Nombre) VALUES({},'{}','Oficina')", bank,
                   QString::number(i).rightJustified(4, u'0'));
  }
  transaction.Commit();
  return bank;
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const QString content = QString::fromLatin1(bench::BigLetter(letterBytes));
  if (QCoreApplication::arguments().contains(u"--once"_s)) {
    OpenTypeAndSave(content);
    return 0;
  }
  const bench::Office office;
  adodb::Execute(office.Connection(), u"INSERT INTO CartasModelo(Nombre,Contenido) VALUES('Grande','{}')", content);
  office.Select(
      adodb::Execute(office.Connection(), u"SELECT MAX(IDCartaModelo) AS N FROM CartasModelo")->Field(0).toInt());

  std::vector<bench::Contestant> opening{
      {"the editor: load, paint, unload", [] { Open(letters::CreateFrmCartaModelo()); }},
      {"reading the letter",
       [&] {
         QTextDocument document;
         rtf::Read(content, document);
       }},
  };
  bench::Race(opening, rounds);
  bench::Report("Opening a letter of 5 MB", opening, {2.0});
  TypeInTheMiddle();
  TypeInATable();

  const int bank = AddBank(office.Connection());
  std::vector<bench::Contestant> adding{
      {"a new letter: load, paint, unload",
       [&] {
         office.Add();
         Open(letters::CreateFrmCartaModelo());
       }},
      {"a bank of 10,000 branches",
       [&] {
         office.Select(bank);
         Open(banking::CreateFrmBanco());
       }},
      {"a new bank",
       [&] {
         office.Add();
         Open(banking::CreateFrmBanco());
       }},
  };
  bench::Race(adding, 4 * rounds);
  bench::Report("A new letter", adding, {1.0, 1.0});
  return 0;
}
