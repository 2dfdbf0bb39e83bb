#pragma once

#include "host/mailing/pieces/LabelMailing.h"
#include "host/mailing/pieces/LetterMailing.h"
#include "host/mailing/printing/Printing.h"

#include <QString>

#include <functional>

namespace host {

/// What the commands cartas and etiquetas are told.
struct MailingOptions {
  LetterWish letters;
  LabelWish labels;
  QString pdf;             ///< --pdf: one file.
  QString pdfPerPerson;    ///< --pdf-por-persona: a folder.
  QString rtfPerPerson;    ///< --rtf-por-persona: a folder.
  PrintWish printing;      ///< --impresora and how; without its calibration.
  bool fromLast = false;   ///< --desde-la-ultima: labels begin behind the last ones that came out well.
  bool remembers = false;  ///< --recordar: these labels came out well, whatever becomes of them.
  bool accepts = false;    ///< --aceptar: what looks wrong is printed as it is.
  bool given = false;      ///< Whether any of the options was there.
};

/// Takes an option that belongs to these commands. `value` gives what follows it, and raises 5 where nothing does.
/// False for any other option. Raises 5 for a value that does not serve.
bool TakeMailingFlag(const QString& name, MailingOptions& options);
bool TakeMailingOption(const QString& name, const std::function<QString()>& value, MailingOptions& options);

/// Raises 5 where the command lacks something or has what belongs to the other one.
void CheckLetterOptions(const MailingOptions& options);
void CheckLabelOptions(const MailingOptions& options);

}  // namespace host
