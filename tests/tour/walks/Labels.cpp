#include "tour/Walks.h"

#include <QMessageBox>
#include <QTableView>

using adodb::StatementText;
using support::DialogUser;
using namespace Qt::StringLiterals;

namespace tour {

namespace {

struct Entry {
  QString table;  ///< Empty for a free text.
  QString value;
  int line;
  int position;
};

const QList<Entry> address{
    {u"Colaboradores"_s, u"[COLABORADORES].[NOMBRE]"_s, 1, 1},
    {u"Colaboradores"_s, u"[COLABORADORES].[APELLIDO1]"_s, 1, 2},
    {u"Colaboradores"_s, u"[COLABORADORES].[DIRECCION]"_s, 2, 1},
    {u"Colaboradores"_s, u"[COLABORADORES].[CP]"_s, 3, 1},
    {u"Colaboradores"_s, u"[COLABORADORES].[POBLACION]"_s, 3, 2},
    {QString(), u"Imprès d'Espanya"_s, 5, 1},
};

const QStringList addressRows{
    u"[COLABORADORES].[NOMBRE]|Falso|1|1"_s,    u"[COLABORADORES].[APELLIDO1]|Falso|1|2"_s,
    u"[COLABORADORES].[DIRECCION]|Falso|2|1"_s, u"[COLABORADORES].[CP]|Falso|3|1"_s,
    u"[COLABORADORES].[POBLACION]|Falso|3|2"_s, u"*Imprès d'Espanya|Falso|5|1"_s,
};

const QStringList diskRows{
    u"[EMISORES].[CIF]|Verdadero|1|1"_s,      u"[EMISORES].[SUFIJO]|Verdadero|1|2"_s,
    u"[EMISORES].[NOMBRE]|Verdadero|1|3"_s,   u"[BANCOS].[NUMERO]|Verdadero|2|1"_s,
    u"[SUCURSALES].[CODIGO]|Verdadero|2|2"_s, u"[DISCOS].[FECHACREACION]|Verdadero|3|1"_s,
    u"[DISCOS].[FECHACARGO]|Verdadero|3|2"_s, u"[DISCOS].[RECIBOS]|Verdadero|4|1"_s,
    u"[DISCOS].[IMPORTE]|Verdadero|5|1"_s,
};

QString RowsOf(int sheet) {
  return StatementText(
      u"SELECT NombreCampo, Disco, Linea, Orden FROM EtiquetasCampos WHERE codEtiqueta={} ORDER BY Linea, Orden",
      sheet);
}

// Labels in all, in a row, width and height of one; then the field.
QString NewestSheet() {
  return u"SELECT NETIQUETASTOTAL, NETIQUETASANCHO, ANCHOETIQUETA, ALTOETIQUETA, NombreCampo, EtiquetasCampos.Disco, "
         "Linea, Orden FROM ETIQUETAS INNER JOIN EtiquetasCampos ON IDETIQUETA=codEtiqueta WHERE IDETIQUETA IN "
         "(SELECT MAX(IDETIQUETA) FROM ETIQUETAS) ORDER BY Linea, Orden"_s;
}

QStringList Behind(const QString& sheet, QStringList rows) {
  for (QString& row : rows) {
    row.prepend(sheet);
  }
  return rows;
}

void Measure(const DialogUser& dialog, const QStringList& measures) {
  for (int i = 0; i < measures.size(); ++i) {
    dialog.Type(u"txtMedidas_%1"_s.arg(i).toLatin1(), measures[i]);
  }
}

void AddEntries(const DialogUser& dialog) {
  for (const Entry& entry : address) {
    dialog.Press("cmdCampos_2");
    if (entry.table.isEmpty()) {
      dialog.Press("optCampos_1");
      dialog.Type("txtCampos_2", entry.value);
    } else {
      dialog.Choose("cboCampos_0", entry.table);
      dialog.Choose("cboCampos_1", entry.value);
    }
    dialog.Type("txtCampos_0", QString::number(entry.line));
    dialog.Type("txtCampos_1", QString::number(entry.position));
    dialog.Press("cmdCampos_5");
  }
}

void PostalSheet(Tour& tour) {
  tour.Windows().On("frmEtiquetas1", [&](const DialogUser& dialog) {
    dialog.Type("txtReferencia", u"Hoja d'adreces"_s);
    dialog.Type("txtEtiquetasTotales", u"40"_s);
    dialog.Type("txtEtiquetasFila", u"4"_s);
    Measure(dialog, {u"7"_s, u"2.9"_s, u"0"_s, u"0"_s, u"0"_s, u"0,3"_s});
    tour.Picture(dialog, u"frmEtiquetas1-no-cabe"_s);
    dialog.Type("txtMedidas_0", u"6"_s);
    dialog.Type("txtEtiquetasFila", u"3"_s);
    dialog.Paste("txtEtiquetasTotales", u"30"_s);
    tour.Picture(dialog, u"frmEtiquetas1"_s);
    dialog.Paste("txtEtiquetasTotales", u"40"_s);
    // The spinner, by its keys: from 3 to 4.
    dialog.Find("txtEtiquetasFila")->setFocus();
    dialog.Key(Qt::Key_Up);
    dialog.Press("cmdSeleccionar_1");
    dialog.Press("cmdSeleccionar_2");
  });
  tour.Windows().On("frmEtiquetas2", [&](const DialogUser& dialog) {
    AddEntries(dialog);
    tour.Picture(dialog, u"frmEtiquetas2"_s);
    dialog.Press("cmdCampos_3");
    tour.Picture(dialog, u"frmEtiquetas2-modificar"_s);
    dialog.Press("cmdCampos_6");
    dialog.Press("cmdCampos_0");
  });
  tour.Step(u"Etiquetas: agregar hoja postal de 40, seis campos"_s,
            {.node = node.Etiquetas(), .action = action.Agregar()}, NewestSheet(),
            Behind(u"40|4|6|2,9|"_s, addressRows));
}

void DiskSheet(Tour& tour) {
  tour.Windows().On("frmEtiquetas1", [&](const DialogUser& dialog) {
    dialog.Type("txtReferencia", u"Discos"_s);
    dialog.Press("optDisco");
    dialog.Type("txtEtiquetasTotales", u"8"_s);
    dialog.Type("txtEtiquetasFila", u"2"_s);
    Measure(dialog, {u"9"_s, u"6,5"_s, u"0,5"_s, u"0,4"_s, u"1,2"_s, u"1,3"_s});
    tour.Picture(dialog, u"frmEtiquetas1-disco"_s);
    dialog.Press("cmdSeleccionar_2");
  });
  tour.Step(u"Etiquetas: agregar hoja de disco bancario"_s, {.node = node.Etiquetas(), .action = action.Agregar()},
            NewestSheet(), Behind(u"8|2|9|6,5|"_s, diskRows));
}

// The sheet of addresses becomes one of disks and a sheet of addresses again.
void ThereAndBack(Tour& tour) {
  const int sheet = tour.Id(u"SELECT IDETIQUETA FROM ETIQUETAS WHERE NOMBRE='Hoja d''adreces'");
  tour.Windows().On("frmEtiquetas1", [](const DialogUser& dialog) {
    dialog.Press("optDisco");
    dialog.Press("cmdSeleccionar_2");
  });
  tour.Step(u"Etiquetas: la hoja postal pasa a disco"_s,
            {.node = node.Etiquetas(), .action = action.Modificar(), .id = sheet}, RowsOf(sheet), diskRows);

  tour.Windows().On("frmEtiquetas1", [](const DialogUser& dialog) {
    dialog.Press("optEnvioPostal");
    dialog.Press("cmdSeleccionar_2");
    dialog.Press("cmdSeleccionar_1");
    dialog.Press("cmdSeleccionar_2");
  });
  tour.Windows().On("frmEtiquetas2", [](const DialogUser& dialog) {
    AddEntries(dialog);
    dialog.Press("cmdCampos_0");
  });
  tour.Windows().Answer(QMessageBox::Ok);
  tour.Step(u"Etiquetas: y vuelve a postal, con campos"_s,
            {.node = node.Etiquetas(), .action = action.Modificar(), .id = sheet}, RowsOf(sheet), addressRows);

  tour.Windows().On("frmEtiquetas1", [](const DialogUser& dialog) {
    dialog.Press("cmdSeleccionar_1");
    dialog.Press("cmdSeleccionar_2");
  });
  tour.Windows().On("frmEtiquetas2", [&](const DialogUser& dialog) {
    dialog.Find<QTableView>("msgCampos")->selectRow(3);
    dialog.Press("cmdCampos_3");
    dialog.Type("txtCampos_0", u"4"_s);
    dialog.Press("cmdCampos_5");
    dialog.Press("cmdCampos_0");
  });
  QStringList moved = addressRows;
  moved.removeAt(3);
  moved.insert(4, u"[COLABORADORES].[CP]|Falso|4|1"_s);
  tour.Step(u"Etiquetas: mover un campo de línea"_s,
            {.node = node.Etiquetas(), .action = action.Modificar(), .id = sheet}, RowsOf(sheet), moved);
}

}  // namespace

void WalkLabels(Tour& tour) {
  PostalSheet(tour);
  DiskSheet(tour);
  ThereAndBack(tour);
}

}  // namespace tour
