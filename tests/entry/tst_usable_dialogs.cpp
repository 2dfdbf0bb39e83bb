#include "EveryDialog.h"

#include "host/look/Look.h"
#include "support/WindowFaults.h"

using namespace Qt::StringLiterals;

using host::Look;
using support::DialogUser;
using support::TestHost;

namespace {

const Look looks[] = {{.colours = Look::Colours::Light},
                      {.colours = Look::Colours::Dark, .textPercent = Look::largestText}};

}  // namespace

/// Every dialog for those who hear the screen, use the keyboard or need large letters.
class tst_usable_dialogs : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void EveryDialog_data() { AddEveryDialog(); }

  void EveryDialog() {
    QFETCH(int, node);
    QFETCH(int, id);
    QStringList faults;
    for (const Look& look : looks) {
      host::UseLook(look);
      TestHost host;
      EXPECT_CLEAN(host, OpenEach(host, node, id, [&](const DialogUser& dialog) {
                     if (node == support::node.CartasModelo()) {
                       // It does not scroll: as on a screen that has room for it.
                       dialog.Dialog()->resize(dialog.Dialog()->sizeHint());
                     }
                     faults += support::WindowFaults(*dialog.Dialog());
                   }));
    }
    host::UseLook({});
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
  }

  // It opens from the sheet's dialog only.
  void FieldsOfASheet() {
    QStringList faults;
    for (const Look& look : looks) {
      host::UseLook(look);
      TestHost host(database::Content::Demonstration);
      host.driver.On("frmEtiquetas1", [](const DialogUser& dialog) {
        dialog.Press("cmdSeleccionar_1");
        dialog.Press("cmdSeleccionar_3");
      });
      host.driver.On("frmEtiquetas2", [&](const DialogUser& dialog) {
        dialog.Press("cmdCampos_2");
        faults += support::WindowFaults(*dialog.Dialog());
        dialog.Press("cmdCampos_6");
        dialog.Press("cmdCampos_1");
      });
      EXPECT_CLEAN(host, host.PasarDatos(support::node.Etiquetas(), support::action.Modificar(), 1));
    }
    host::UseLook({});
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
  }
};

KEL_TEST(tst_usable_dialogs);
#include "tst_usable_dialogs.moc"
