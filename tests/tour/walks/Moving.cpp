#include "tour/OlderOffice.h"
#include "tour/Walks.h"

#include "database/Maintenance.h"
#include "host/moving/window/GridView.h"
#include "host/moving/window/MovingAssistant.h"
#include "platform/automation/Conversion.h"

#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTest>

using adodb::StatementText;
using support::DialogUser;
using namespace Qt::StringLiterals;

namespace tour {

namespace {

const QString databaseFile = u"traida.db"_s;

/// The assistant, used as a person does.
class Assistant {
 public:
  explicit Assistant(Tour& tour)
      : m_tour(tour),
        m_window({database::ConnectionStringForFile(tour.File(databaseFile)), tour.File(u"copias"_s), 1,
                  u"Administrador"_s, true, false},
                 u"Kel"_s) {
    m_window.resize(1200, 800);
    m_window.show();
  }

  void Open(const QString& name, const QByteArray& bytes) {
    QFile file(m_tour.File(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
      throw support::Failure("can't write", name);
    }
    file.close();
    m_window.Open(file.fileName());
    Wait();
  }
  void GoOn() {
    auto* next = m_window.findChild<QPushButton*>(u"cmdSiguiente"_s);
    if (!next->isEnabled()) {
      Picture(u"traer-parado"_s);
      throw support::Failure("can't go on from step", m_window.findChild<QLabel*>(u"lblPaso"_s)->text());
    }
    next->click();
    Wait();
  }
  void GoTo(const char* list, int row) {
    auto* view = m_window.findChild<host::GridView*>(QString::fromLatin1(list));
    view->setCurrentIndex(view->model()->index(row, 0));
  }
  void Picture(const QString& name) {
    QCoreApplication::sendPostedEvents();
    m_window.grab().save(m_tour.File(name + u".png"_s));
  }
  QStringList Problems() const {
    return m_window.HasBrought() ? QStringList() : QStringList(u"no se ha traído nada"_s);
  }

 private:
  void Wait() {
    constexpr int longest = 60'000;
    if (!QTest::qWaitFor([this] { return !m_window.IsBusy(); }, longest)) {
      throw support::Failure("still busy:", m_window.windowTitle());
    }
  }

  Tour& m_tour;
  host::MovingAssistant m_window;
};

QStringList BringOffice(Tour& tour, adodb::Connection& older) {
  Assistant assistant(tour);
  assistant.Open(u"oficina.mdb"_s, OlderOffice(older));
  assistant.Picture(u"traer-archivo"_s);
  assistant.GoOn();
  assistant.GoTo("grdTablas", 1);
  assistant.Picture(u"traer-tablas"_s);
  assistant.GoOn();
  assistant.Picture(u"traer-datos"_s);
  assistant.GoOn();
  assistant.Picture(u"traer-informe"_s);
  return assistant.Problems();
}

QStringList BringList(Tour& tour, const QString& name, const QByteArray& bytes) {
  Assistant assistant(tour);
  assistant.Open(name, bytes);
  assistant.GoOn();
  assistant.GoOn();
  assistant.Picture(u"traer-"_s + name.section(u'.', 0, 0).toLower());
  assistant.GoOn();
  return assistant.Problems();
}

QStringList Answers(adodb::Connection& connection, const QString& query) {
  QStringList lines;
  for (const auto rows = connection.Execute(query); !rows->AtEnd(); rows->MoveNext()) {
    lines += automation::Text(rows->Field(0));
  }
  return lines;
}

void WalkMoved(Tour& tour, adodb::Connection& older) {
  const QString total = u"SELECT SUM(Importe) AS T FROM Donativos WHERE Eliminado=0"_s;
  tour.Act(
      u"Traer: una oficina entera (.mdb)"_s, [&] { return BringOffice(tour, older); }, total, Answers(older, total));
  const QString letters = u"SELECT Contenido FROM CartasModelo WHERE Eliminado=0 ORDER BY Nombre, IDCartaModelo"_s;
  tour.Act(
      u"Traer: las cartas, byte a byte"_s, [] { return QStringList(); }, letters, Answers(older, letters));
  tour.Act(u"Traer: la base de datos está sana"_s, [&] {
    return database::CheckDatabase(database::ConnectionStringForFile(tour.File(databaseFile))).references;
  });
  tour.Act(u"Traer: una lista de bancos (.xlsx)"_s, [&] { return BringList(tour, u"Bancos.xlsx"_s, BankList(older)); },
           u"SELECT Nombre FROM Bancos WHERE Numero='9321' OR Nombre='Banco de la Lista' ORDER BY Nombre"_s,
           {u"Banco de la Lista"_s, u"Banco Recién Abierto"_s});
  tour.Act(u"Traer: los miembros (.csv)"_s, [&] { return BringList(tour, u"Colaboradores.csv"_s, MemberList(older)); },
           u"SELECT COUNT(*) AS N FROM Colaboradores WHERE Direccion='Calle Mayor, 1' AND Apellido1='Nueva' OR "
           "Direccion='Calle de la Mudanza, 2' AND Apellido1<>''"_s,
           {u"2"_s});
  tour.Windows().On("frmBanco", [&](const DialogUser& dialog) {
    tour.Picture(dialog, u"traer-frmBanco"_s);
    dialog.Press("cmdBanco_4");
  });
  const int bank = tour.Id(u"SELECT IDBanco FROM Bancos WHERE Nombre='Banco de la Lista'");
  tour.Step(u"Traer: el banco en su cuadro"_s, {.node = node.Bancos(), .action = action.Modificar(), .id = bank}, {},
            {});
}

}  // namespace

void WalkMoving(Tour& tour) {
  const auto older = database::CreateConnection(database::ConnectionStringForFile(tour.File(u"demostracion.db"_s)));
  older->Open();
  tour.OnANewDatabase(databaseFile, [&] { WalkMoved(tour, *older); });
}

}  // namespace tour
