#include "labels/FieldRows.h"

#include "platform/adodb/Statement.h"
#include "platform/contract/cConstAccion.h"

#include <array>

using adodb::StatementText;

namespace labels {

namespace {

constexpr cConstAccion action;

struct DiskRow {
  QStringView name;
  int line;
  int position;
};

constexpr std::array diskRows{
    DiskRow{u"[EMISORES].[CIF]", 1, 1},      DiskRow{u"[EMISORES].[SUFIJO]", 1, 2},
    DiskRow{u"[EMISORES].[NOMBRE]", 1, 3},   DiskRow{u"[BANCOS].[NUMERO]", 2, 1},
    DiskRow{u"[SUCURSALES].[CODIGO]", 2, 2}, DiskRow{u"[DISCOS].[FECHACREACION]", 3, 1},
    DiskRow{u"[DISCOS].[FECHACARGO]", 3, 2}, DiskRow{u"[DISCOS].[RECIBOS]", 4, 1},
    DiskRow{u"[DISCOS].[IMPORTE]", 5, 1},
};

void AppendDiskRows(qint32 sheet, QStringList& statements) {
  for (const DiskRow& row : diskRows) {
    // Intended: the rows are fields, and have the field number 0 of a free text all the same.
    statements.append(StatementText(
        u"INSERT INTO EtiquetasCampos (codEtiqueta, NombreCampo, Disco, Linea, Orden, codTipoCampoEtiqueta) "
        u"VALUES ({},'{}',-1,{},{},0)",
        sheet, row.name, row.line, row.position));
  }
}

void AppendField(qint32 sheet, const cCampo& field, QStringList& statements) {
  const QString name = StoredName(field);
  if (!field.ExisteEnBD) {
    statements.append(StatementText(
        u"INSERT INTO EtiquetasCampos (codEtiqueta, NombreCampo, Disco, Linea, Orden, codTipoCampoEtiqueta) "
        u"VALUES ({},'{}',0,{},{},{})",
        sheet, name, field.Linea, field.Orden, field.IDCampo));
  } else if (field.Estado == action.Modificar()) {
    statements.append(
        StatementText(u"UPDATE EtiquetasCampos SET NombreCampo='{}',Linea={},Orden={},codTipoCampoEtiqueta={} "
                      u"WHERE IDEtiquetaCampo={}",
                      name, field.Linea, field.Orden, field.IDCampo, field.IDElemento));
  } else if (field.Estado == action.Eliminar()) {
    statements.append(StatementText(u"DELETE FROM EtiquetasCampos WHERE IDEtiquetaCampo={}", field.IDElemento));
  }
}

}  // namespace

QString StoredName(const cCampo& field) {
  return field.UsarCampo ? field.Campo : u'*' + field.Campo;
}

QStringList WritingStatements(qint32 sheet, SheetKind kind, const FieldCollection& fields) {
  QStringList statements;
  if (kind.disk) {
    AppendDiskRows(sheet, statements);
  }
  if (kind.postal) {
    for (const auto& [key, field] : fields) {
      AppendField(sheet, *field, statements);
    }
  }
  return statements;
}

QStringList ReconcilingStatements(qint32 sheet, SheetKind loaded, SheetKind now, const FieldCollection& fields) {
  QStringList statements;
  if (!loaded.disk && now.disk) {
    statements += WritingStatements(sheet, {.disk = true}, fields);
  } else if (loaded.disk && !now.disk) {
    statements +=
        StatementText(u"DELETE FROM ETIQUETASCAMPOS WHERE CODETIQUETA={} AND ETIQUETASCAMPOS.DISCO=-1", sheet);
  }
  if (now.postal) {
    statements += WritingStatements(sheet, {.postal = true}, fields);
  } else if (loaded.postal) {
    statements += StatementText(u"DELETE FROM ETIQUETASCAMPOS WHERE CODETIQUETA={} AND ETIQUETASCAMPOS.DISCO=0", sheet);
  }
  return statements;
}

}  // namespace labels
