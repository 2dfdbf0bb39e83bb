#pragma once

#include "moving/NameMatch.h"
#include "moving/ReadFile.h"

#include <QString>

#include <functional>

namespace host {

/// What the commands importar and exportar are told.
struct MovingOptions {
  QString file;                ///< What is brought in, or written.
  QString table;               ///< --tabla T: the table of a list, or the only one to be written.
  moving::NameWishes names;    ///< --tabla THERE=HERE, --columna TABLE.THERE=HERE.
  bool isTrial = false;        ///< --prueba
  bool acceptsLosses = false;  ///< --aunque-falten
  bool skipsDeleted = false;   ///< --sin-eliminados
  moving::ReadWishes read;     ///< --hoja, --titulos, --codificacion, --separador
  QString memory;              ///< --correspondencia: a person's settings, see moving::NameMemory.
  QString answers;             ///< --respuestas: a file, see moving::Answers.
  QString report;              ///< --informe: a file for the report.
  bool given = false;          ///< Whether any of the options was there.

  bool operator==(const MovingOptions&) const = default;
};

/// As TakeMailingFlag and TakeMailingOption.
bool TakeMovingFlag(const QString& name, MovingOptions& options);
bool TakeMovingOption(const QString& name, const std::function<QString()>& value, MovingOptions& options);

/// Raises 5 where the command lacks its file, or has what belongs to the other one.
void CheckImportOptions(const MovingOptions& options);
void CheckExportOptions(const MovingOptions& options);

}  // namespace host
