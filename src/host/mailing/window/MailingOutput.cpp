#include "host/mailing/window/MailingOutput.h"

#include "database/Database.h"
#include "documents/rtf/Rtf.h"
#include "host/mailing/output/Outputs.h"
#include "host/mailing/pieces/ReadMailing.h"
#include "host/mailing/printing/CalibrationRecords.h"
#include "platform/text/Counted.h"

#include <algorithm>
#include <iterator>
#include <vector>

using namespace Qt::StringLiterals;

namespace host {

namespace {

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

void RequireAsAccepted(const PrintedWork& work, const QStringList& faults, const OutputOrder& order) {
  if (work.Count() == 0) {
    Refuse(u"Ya no hay nadie a quien escribir: los datos han cambiado. No se ha escrito nada."_s);
  }
  for (const QString& fault : faults) {
    if (!order.accepted.contains(fault)) {
      Refuse(u"Los datos han cambiado, y no se ha escrito nada. %1"_s.arg(fault));
    }
  }
}

QString Files(int written, int count, const QString& folder) {
  return written == count
             ? u"%1 en «%2»."_s.arg(texts::Counted(count, u"archivo"_s, u"archivos"_s), folder)
             : u"Interrumpido: quedan %1 en «%2»."_s.arg(texts::Counted(written, u"archivo"_s, u"archivos"_s), folder);
}

QString WholeFile(bool isWhole, const QString& text, const OutputOrder& order) {
  return isWhole ? u"%1 en «%2»."_s.arg(text, order.target) : u"Interrumpido: no se ha dejado ningún archivo."_s;
}

}  // namespace

RunResult PrintCalibrated(const PrintedWork& work, const QString& connectionString, PrintWish wish,
                          RunControl& control) {
  const auto connection = database::CreateConnection(connectionString);
  connection->Open();
  if (const auto kept = FindCalibration(*connection, {wish.queue, wish.tray})) {
    wish.calibration = kept->calibration;
  }
  RunResult result;
  const int job = Print(work, wish, control);
  result.isWhole = job != 0;
  result.text = result.isWhole ? u"Enviado a la impresora «%1», trabajo %2."_s.arg(wish.queue).arg(job)
                               : u"Interrumpido: no se ha impreso nada."_s;
  return result;
}

int DifferingPieces(QList<std::size_t> before, QList<std::size_t> now) {
  std::ranges::sort(before);
  std::ranges::sort(now);
  std::vector<std::size_t> common;
  std::ranges::set_intersection(before, now, std::back_inserter(common));
  return static_cast<int>(std::max(before.size(), now.size())) - static_cast<int>(common.size());
}

RunResult MakeLetters(const QString& connectionString, const LetterWish& wish, int userId, const OutputOrder& order,
                      RunControl& control) {
  const std::unique_ptr<LetterMailing> letters = ReadLetters(connectionString, wish, userId);
  RequireAsAccepted(*letters, letters->Faults(), order);
  RunResult result;
  result.differing = DifferingPieces(order.seen, letters->Fingerprints());
  const int count = letters->Count();
  if (order.kind == OutputOrder::Kind::Pdf) {
    result.isWhole = WritePdf(*letters, order.target, control);
    result.text = WholeFile(result.isWhole, texts::Counted(count, u"carta"_s, u"cartas"_s), order);
    return result;
  }
  if (order.kind == OutputOrder::Kind::Printer) {
    RunResult printed = PrintCalibrated(*letters, connectionString, order.printing, control);
    printed.differing = result.differing;
    return printed;
  }
  const auto rich = [&](int letter) { return rtf::Write(*letters->Filled(letter)); };
  const int written = order.kind == OutputOrder::Kind::PdfPerPerson
                          ? WritePdfFiles(*letters, order.target, control)
                          : WriteFiles(*letters, order.target, u".rtf"_s, rich, control);
  result.isWhole = written == count;
  result.text = Files(written, count, order.target);
  return result;
}

RunResult MakeLabels(const QString& connectionString, const LabelWish& wish, int userId, const OutputOrder& order,
                     RunControl& control) {
  const std::unique_ptr<LabelMailing> labels = ReadLabels(connectionString, wish, userId);
  RequireAsAccepted(*labels, labels->Faults(), order);
  RunResult result;
  result.differing = DifferingPieces(order.seen, labels->Fingerprints());
  if (order.kind == OutputOrder::Kind::Printer) {
    RunResult printed = PrintCalibrated(*labels, connectionString, order.printing, control);
    printed.differing = result.differing;
    const bool isToTheEnd = order.printing.pages.last == 0 || order.printing.pages.last >= labels->Count();
    printed.lastLabel = printed.isWhole && isToTheEnd ? labels->LastLabel() : 0;
    return printed;
  }
  result.isWhole = WritePdf(*labels, order.target, control);
  result.text = WholeFile(result.isWhole,
                          u"%1, %2,"_s.arg(texts::Counted(labels->Labels(), u"etiqueta"_s, u"etiquetas"_s),
                                           texts::Counted(labels->Count(), u"hoja"_s, u"hojas"_s)),
                          order);
  return result;
}

}  // namespace host
