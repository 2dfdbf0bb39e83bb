// Opening a sheet of 1,000 fields beside the same rows through the engine's C interface, and what a keystroke in a
// bounded box costs beside one in a plain box.

#include "labels/Dialogs.h"
#include "platform/adodb/Statement.h"
#include "support/Office.h"
#include "support/Race.h"

#include <QApplication>
#include <QLineEdit>

using adodb::Execute;
using namespace framework;
using namespace Qt::StringLiterals;

namespace {

constexpr int fields = 1000;
constexpr int keystrokes = 1000;
constexpr int rounds = 7;

class SheetOffice : public bench::Office {
 public:
  SheetOffice() {
    Connection().BeginTrans();
    Execute(Connection(),
            u"INSERT INTO ETIQUETAS(NOMBRE,NETIQUETASTOTAL,NETIQUETASANCHO,ENVIOPOSTAL) "
            u"VALUES('Grande',40,4,-1)");
    m_sheet = Execute(Connection(), u"SELECT MAX(IDETIQUETA) AS N FROM ETIQUETAS")->Field(u"N").toInt();
    for (int i = 0; i < fields; ++i) {
      Execute(Connection(),
              u"INSERT INTO EtiquetasCampos(codEtiqueta,NombreCampo,Disco,Linea,Orden,codTipoCampoEtiqueta) "
              u"VALUES({},'[COLABORADORES].[NOMBRE]',0,{},{},2)",
              m_sheet, i / 200 + 1, i % 200 + 1);
    }
    Connection().CommitTrans();
    Select(m_sheet);
  }

  std::unique_ptr<MaintenanceForm> Opened() const {
    std::unique_ptr<MaintenanceForm> dialog = labels::CreateFrmEtiquetas1();
    dialog->Load();
    return dialog;
  }

  void ReadFields() const {
    ReadNative(
        "SELECT EtiquetasCampos.IDEtiquetaCampo, EtiquetasCampos.Linea, EtiquetasCampos.Orden, "
        "EtiquetasCampos.NombreCampo, EtiquetasCampos.codTipoCampoEtiqueta, TipoCamposEtiquetas.codTabla FROM "
        "EtiquetasCampos LEFT JOIN TipoCamposEtiquetas ON "
        "EtiquetasCampos.codTipoCampoEtiqueta=TipoCamposEtiquetas.IDTipoCampoEtiqueta WHERE "
        "EtiquetasCampos.codEtiqueta=" +
        QByteArray::number(m_sheet) + " AND EtiquetasCampos.Disco=0");
  }

 private:
  int m_sheet = 0;
};

void Write(QLineEdit& box) {
  for (int i = 0; i < keystrokes; ++i) {
    box.setText(i % 2 == 0 ? u"7,5"_s : u"8,25"_s);
  }
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const SheetOffice office;
  std::vector<bench::Contestant> opening{
      {"the dialog: load, fields, change tracking, unload", [&] { office.Opened()->Unload(); }},
      {"the rows of its fields through the C interface", [&] { office.ReadFields(); }},
  };
  bench::Race(opening, rounds);
  bench::Report("Opening a sheet of 1,000 fields", opening, {10.0});

  const auto dialog = office.Opened();
  auto* bounded = dialog->findChild<QLineEdit*>(u"txtMedidas_0"_s);
  QLineEdit plain;
  std::vector<bench::Contestant> typing{
      {"a bounded box: bounds, rows, sheet, words", [&] { Write(*bounded); }},
      {"a plain box", [&] { Write(plain); }},
  };
  bench::Race(typing, rounds);
  bench::Report("1,000 changes of a box", typing, {20.0});
  return 0;
}
