#include "host/cli/MailingCommand.h"

#include "documents/rtf/Rtf.h"
#include "host/cli/Application.h"
#include "host/cli/Startup.h"
#include "host/mailing/output/Outputs.h"
#include "host/mailing/pieces/ReadMailing.h"
#include "host/mailing/pieces/SheetUse.h"
#include "host/mailing/printing/CalibrationRecords.h"
#include "host/mailing/printing/PrintQueues.h"
#include "platform/automation/Error.h"
#include "platform/process/TerminationSignals.h"

#include <QGuiApplication>
#include <QTextStream>
#include <QThread>

#include <exception>

using namespace Qt::StringLiterals;

namespace host {

namespace {

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

void Tell(const MailingNotes& notes) {
  QTextStream out(stderr);
  if (!notes.leftOut.isEmpty()) {
    out << u"Se quedan fuera:\n  "_s << Sentences(notes.leftOut).join(u"\n  "_s) << u'\n';
  }
  const QStringList doubtful = notes.remarks + Sentences(notes.doubtful);
  if (!doubtful.isEmpty()) {
    out << u"Conviene mirarlo:\n  "_s << doubtful.join(u"\n  "_s) << u'\n';
  }
}

void RequireAccepted(const QStringList& faults, bool accepts) {
  if (faults.isEmpty()) {
    return;
  }
  const QString list = faults.join(u"\n  "_s);
  if (!accepts) {
    Refuse(u"No se ha escrito nada:\n  %1\nCorríjalo, o use la opción «--aceptar» para dejarlo como está."_s.arg(list));
  }
  QTextStream(stderr) << u"Se deja como está:\n  "_s << list << u'\n';
}

void RequireSomething(const PrintedWork& work) {
  if (work.Count() == 0) {
    Refuse(u"No hay nadie a quien escribir, y no se ha escrito nada."_s);
  }
}

/// What was made.
struct Made {
  QString said;       ///< In words; empty for a run that was cancelled.
  int lastLabel = 0;  ///< Of labels.
};

QString Printed(const PrintedWork& work, const PrintWish& wish, RunControl& control) {
  const int job = Print(work, wish, control);
  return job == 0 ? QString() : u"Enviado a la impresora «%1», trabajo %2."_s.arg(wish.queue).arg(job);
}

Made MakeLetters(const QString& connectionString, const MailingOptions& options, int userId, RunControl& control) {
  LetterWish wish = options.letters;
  if (!wish.moment.isValid()) {
    wish.moment = QDateTime::currentDateTime();
  }
  if (wish.year == 0) {
    wish.year = wish.moment.date().year() - 1;
  }
  const std::unique_ptr<LetterMailing> letters = ReadLetters(connectionString, wish, userId);
  Tell(letters->Notes());
  RequireAccepted(letters->Faults(), options.accepts);
  RequireSomething(*letters);
  const int count = letters->Count();
  if (!options.printing.queue.isEmpty()) {
    return {.said = Printed(*letters, options.printing, control)};
  }
  if (!options.pdf.isEmpty()) {
    const bool whole = WritePdf(*letters, options.pdf, control);
    return {.said = whole ? u"%1 cartas en «%2»."_s.arg(count).arg(options.pdf) : QString()};
  }
  const bool asPdf = !options.pdfPerPerson.isEmpty();
  const QString folder = asPdf ? options.pdfPerPerson : options.rtfPerPerson;
  const auto rich = [&](int letter) { return rtf::Write(*letters->Filled(letter)); };
  const int written =
      asPdf ? WritePdfFiles(*letters, folder, control) : WriteFiles(*letters, folder, u".rtf"_s, rich, control);
  return {.said = written == count ? u"%1 archivos en «%2»."_s.arg(count).arg(folder) : QString()};
}

Made MakeLabels(const QString& connectionString, const MailingOptions& options, int userId, RunControl& control) {
  const std::unique_ptr<LabelMailing> labels = ReadLabels(connectionString, options.labels, userId);
  Tell(labels->Notes());
  RequireAccepted(labels->Faults(), options.accepts);
  RequireSomething(*labels);
  const bool prints = !options.printing.queue.isEmpty();
  const QString done = prints                                    ? Printed(*labels, options.printing, control)
                       : WritePdf(*labels, options.pdf, control) ? u"En «%1»."_s.arg(options.pdf)
                                                                 : QString();
  if (done.isEmpty()) {
    return {};
  }
  return {.said = u"%1 etiquetas, %2 hojas; la última acaba en la etiqueta %3. %4"_s.arg(labels->Labels())
                      .arg(labels->Count())
                      .arg(labels->LastLabel())
                      .arg(done),
          .lastLabel = labels->LastLabel()};
}

/// What of the options the database knows.
MailingOptions Completed(const CommandLine& line, adodb::Connection& connection) {
  MailingOptions options = line.mailing;
  if (options.fromLast) {
    options.labels.start.first = StartBehindLast(connection, options.labels.sheet);
  }
  PrintWish& printing = options.printing;
  if (!printing.queue.isEmpty()) {
    RequirePrintQueue(printing.queue);
    RequireTray(printing.queue, printing.tray);
    if (const auto kept = FindCalibration(connection, {printing.queue, printing.tray})) {
      printing.calibration = kept->calibration;
    }
  }
  return options;
}

void Remember(const CommandLine& line, adodb::Connection& connection, int lastLabel) {
  const int sheet = line.mailing.labels.sheet;
  if (line.mailing.remembers && !RememberLastLabel(connection, sheet, lastLabel)) {
    Refuse(u"La hoja ha cambiado mientras tanto, y no se ha apuntado dónde acaba."_s);
  }
}

}  // namespace

int RunMailingCommand(const CommandLine& line, int& argc, char** argv) {
  // Pages are painted without a screen.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const std::unique_ptr<StartedSession> started = StartSession(line);
  const MailingOptions options = Completed(line, *started->connection);
  RunControl control;
  Made made;
  std::exception_ptr failure;
  const auto make = line.command == Command::Letters ? MakeLetters : MakeLabels;
  const std::unique_ptr<QThread> run(QThread::create([&] {
    try {
      made = make(started->connectionString, options, started->session.userId, control);
    } catch (...) {
      failure = std::current_exception();
    }
  }));
  process::TerminationSignals signals;
  QObject::connect(&signals, &process::TerminationSignals::Received, [&] { control.Cancel(); });
  QObject::connect(run.get(), &QThread::finished, &application, &QCoreApplication::quit, Qt::QueuedConnection);
  run->start();
  QGuiApplication::exec();
  run->wait();
  if (failure) {
    std::rethrow_exception(failure);
  }
  if (made.said.isEmpty()) {
    QTextStream(stderr) << u"Interrumpido: %1 de %2.\n"_s.arg(control.Done()).arg(control.Parts());
    return ExitCannotGoOn;
  }
  QTextStream(stdout) << made.said << u'\n';
  Remember(line, *started->connection, made.lastLabel);
  return ExitDone;
}

}  // namespace host
