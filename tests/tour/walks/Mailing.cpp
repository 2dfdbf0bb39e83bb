#include "support/PrintServer.h"
#include "tour/Walks.h"

#include "host/calibration/CalibrationDialog.h"
#include "host/mailing/window/MailingWindow.h"
#include "host/mailing/window/SheetStartPicture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProcess>
#include <QTest>

using support::DialogUser;
using namespace Qt::StringLiterals;

namespace tour {

namespace {

/// The window of letters and labels, used as a person does.
class Office {
 public:
  explicit Office(Tour& tour) : m_tour(tour), m_window(Context(tour)) {
    m_window.resize(1400, 900);
    m_window.show();
    Wait();
  }

  void Wait() {
    constexpr int longest = 60'000;
    if (!QTest::qWaitFor([this] { return !m_window.IsBusy(); }, longest)) {
      throw support::Failure("still busy:", m_window.windowTitle());
    }
  }
  template <typename Control>
  Control* Find(const char* name) {
    auto* control = m_window.findChild<Control*>(QString::fromUtf8(name));
    if (control == nullptr) {
      throw support::Failure("no control", QString::fromUtf8(name));
    }
    return control;
  }
  void Choose(const char* box, const QString& item) {
    auto* combo = Find<QComboBox>(box);
    combo->setCurrentIndex(combo->findText(item));
    Q_EMIT combo->activated(combo->currentIndex());
    Wait();
  }
  void Trigger(const char* action) {
    Find<QAction>(action)->trigger();
    Wait();
  }
  /// What the status line says when that was written into the file or folder.
  QString Write(const char* action, const char* dialog, const QString& target) {
    m_tour.Windows().On(dialog, [target](const DialogUser& user) {
      user.Find<QLineEdit>("fileNameEdit")->setText(target);
      user.Dialog()->findChild<QDialogButtonBox*>()->buttons().constFirst()->click();
    });
    Trigger(action);
    return Find<QLabel>("lblEstado")->text();
  }
  /// Without what was written before, which names folders.
  void Picture(const QString& name) {
    Find<QLabel>("lblEstado")->clear();
    m_window.grab().save(m_tour.File(name + u".png"_s));
  }

 private:
  static host::MailingContext Context(Tour& tour) {
    return {.connectionString = database::ConnectionStringForFile(tour.File(u"demostracion.db"_s)),
            .title = u"Kel"_s,
            .userName = u"Administrador"_s,
            .database = u"demostracion.db"_s,
            .user = {.id = 1, .isAdministrator = true},
            .demonstration = true,
            .helpFile = {},
            .openRecord = {},
            .calibrate = [] {}};
  }

  Tour& m_tour;
  host::MailingWindow m_window;
};

QStringList Differs(const QString& found, const QString& expected) {
  return found == expected ? QStringList() : QStringList(u"se esperaba [%1] y hay [%2]"_s.arg(expected, found));
}

/// From label 7, with label 15 left out; who shares an address gets one.
QStringList MakeLabels(Tour& tour, Office& office) {
  office.Trigger("actEtiquetas");
  office.Choose("cboSeleccion", u"Suscriptores del Boletín (compartida)"_s);
  office.Choose("cboHoja", u"A4, 24 etiquetas (70 x 37)"_s);
  auto* picture = office.Find<host::SheetStartPicture>("picHoja");
  const auto click = [picture](int column, int row, Qt::KeyboardModifiers keys) {
    QTest::mouseClick(picture, Qt::LeftButton, keys,
                      QPoint(picture->width() * (2 * column + 1) / 6, picture->height() * (2 * row + 1) / 16));
  };
  click(0, 2, {});
  click(2, 4, Qt::ControlModifier);
  office.Wait();
  office.Picture(u"correo-etiquetas"_s);
  const QString pieces = office.Find<QLabel>("lblPersonas")->text().section(u" · "_s, 1);
  const QString file = tour.File(u"etiquetas.pdf"_s);
  // One name is longer than its label.
  tour.Windows().Answer(QMessageBox::Yes);
  const QString said = office.Write("actPdf", "dlgPdf", file);
  QProcess text;
  text.start(u"pdftotext"_s, {file, u"-"_s});
  text.waitForFinished();
  const bool isJoined = QString::fromUtf8(text.readAll()).contains(u"D.ª Inés y D. Lorenzo Bermúdez Olmedo"_s);
  return Differs(said, u"%1, 3 hojas, en «%2»."_s.arg(pieces, file)) +
         (isJoined ? QStringList() : QStringList(u"no se juntan los que viven juntos"_s)) +
         Differs(QString::number(picture->Start().first), u"7"_s);
}

QStringList MakeLetters(Tour& tour, Office& office) {
  office.Trigger("actCartas");
  office.Choose("cboSeleccion", u"Colaboradores del extranjero (compartida)"_s);
  office.Choose("cboCarta", u"Agradecimiento de donativo"_s);
  office.Picture(u"correo-cartas"_s);
  const QString file = tour.File(u"cartas.pdf"_s);
  QStringList problems = Differs(office.Write("actPdf", "dlgPdf", file), u"13 cartas en «%1»."_s.arg(file));
  for (const auto& [action, name] :
       {std::pair("actPdfPorPersona", u"cartas-pdf"_s), {"actRtfPorPersona", u"cartas-rtf"_s}}) {
    const QString folder = tour.File(name);
    QDir().mkpath(folder);
    problems += Differs(office.Write(action, "dlgCarpeta", folder), u"13 archivos en «%1»."_s.arg(folder));
  }
  return problems;
}

/// A printer that moves the page is measured with a ruler.
QStringList Calibrate(Tour& tour) {
  const auto connection =
      database::CreateConnection(database::ConnectionStringForFile(tour.File(u"demostracion.db"_s)));
  connection->Open();
  host::CalibrationDialog dialog(*connection, u"Administrador"_s, u"oficina"_s, host::SystemPrinters());
  dialog.resize(dialog.sizeHint());
  tour.Windows().On("calibrationDialog", [&](const DialogUser& user) {
    user.Press("printCalibration");
    for (const auto& [field, text] : {std::pair("measure_0", u"21,2"_s),
                                      {"measure_1", u"19,1"_s},
                                      {"measure_2", u"170"_s},
                                      {"measure_3", u"250"_s}}) {
      user.Type(field, text);
    }
    tour.Picture(user, u"correo-calibrar"_s);
    user.Press("keepCalibration");
  });
  dialog.exec();
  return {};
}

/// Both pages on the printer; the labels have come out well.
QStringList PrintAll(Tour& tour, Office& office, const support::PrintServer& printers) {
  QStringList problems;
  for (const bool isLetters : {true, false}) {
    office.Trigger(isLetters ? "actCartas" : "actEtiquetas");
    tour.Windows().On("dlgImprimir", [&](const DialogUser& user) {
      user.Choose("cboImpresora", u"Oficina"_s);
      if (isLetters) {
        user.Find<QCheckBox>("chkDosCaras")->click();
        tour.Picture(user, u"correo-imprimir"_s);
      }
      user.Press("cmdImprimirYa");
    });
    if (!isLetters) {
      tour.Windows().Answer(QMessageBox::Yes);
    }
    office.Trigger("actImprimir");
    const int job = isLetters ? 2 : 3;
    problems +=
        Differs(office.Find<QLabel>("lblEstado")->text(), u"Enviado a la impresora «oficina», trabajo %1."_s.arg(job));
    const bool isOnBothSides =
        problems.isEmpty() && printers.Delivered(job).options.contains(u" Duplex=DuplexNoTumble "_s);
    problems += Differs(QVariant(isOnBothSides).toString(), QVariant(isLetters).toString());
  }
  return problems;
}

}  // namespace

void WalkMailing(Tour& tour) {
  const support::PrintServer printers;
  Office office(tour);
  tour.Act(u"Impresora calibrada"_s, [&] { return Calibrate(tour); },
           u"SELECT Impresora, DesplazamientoX, DesplazamientoY FROM ImpresorasCalibracion"_s, {u"oficina|1,2|-0,9"_s});
  tour.Act(u"Etiquetas: desde la 7, sin la 15"_s, [&] { return MakeLabels(tour, office); });
  tour.Act(u"Cartas: un PDF, un PDF y un RTF por persona"_s, [&] { return MakeLetters(tour, office); });
  tour.Act(u"Cartas y etiquetas impresas"_s, [&] { return PrintAll(tour, office, printers); },
           u"SELECT NULTIMAETIQUETA, ULTIMOUTILIZADO FROM ETIQUETAS WHERE IDETIQUETA=1"_s, {u"21|1"_s});
}

}  // namespace tour
