#pragma once

#include "labels/FieldCollection.h"

#include <QStringList>

/// The rows of `EtiquetasCampos` that belong to a sheet, as statements.
namespace labels {

/// What a sheet is used for. A stored row may say both, or none.
struct SheetKind {
  bool disk = false;    ///< labels of bank disks
  bool postal = false;  ///< labels of letters
};

/// A free text as it is stored, with the mark that tells it from a field; a field's name as it is.
QString StoredName(const cCampo& field);

/// `GuardarCamposEtiqueta`: the statements that write the fixed rows of a bank disk, or the fields of a postal sheet.
QStringList WritingStatements(qint32 sheet, SheetKind kind, const FieldCollection& fields);

/// The statements that turn the rows of a sheet that was loaded as one kind into those of another kind.
QStringList ReconcilingStatements(qint32 sheet, SheetKind loaded, SheetKind now, const FieldCollection& fields);

}  // namespace labels
