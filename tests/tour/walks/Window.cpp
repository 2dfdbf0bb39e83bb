#include "host/desktop/MainWindow.h"
#include "host/desktop/RecordList.h"
#include "host/records/ComponentBridge.h"
#include "tour/Walks.h"

#include <QLabel>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tour {

namespace {

constexpr int longest = 60'000;

QStringList Problem(bool isWell, const QString& problem) {
  return isWell ? QStringList() : QStringList(problem);
}

}  // namespace

void WalkWindow(Tour& tour) {
  host::ComponentBridge bridge(tour.Services(), tour.Session());
  host::MainWindow window(bridge, database::ConnectionStringForFile(tour.File(u"demostracion.db"_s)),
                          {.title = u"Kel"_s,
                           .user = u"Administrador"_s,
                           .database = u"demostracion.db"_s,
                           .helpFile = {},
                           .demonstration = true});
  window.resize(1100, 720);
  window.show();
  const auto picture = [&](const QString& name) { window.grab().save(tour.File(name + u".png"_s)); };
  tour.Act(u"La página de inicio"_s, [&] {
    window.ChooseNode(host::homeNode);
    const auto* office = window.findChild<QLabel*>(u"lblOffice"_s);
    const bool isRead = QTest::qWaitFor([&] { return office->text().contains(u"Puente de Luz"_s); }, longest);
    picture(u"ventana-inicio"_s);
    return Problem(isRead, u"la página de inicio no se ha leído"_s);
  });
  tour.Act(u"Un banco con sus sucursales debajo de la lista"_s, [&] {
    window.ChooseNode(node.Bancos());
    const auto* branches = window.findChild<host::RecordList*>(u"detailList"_s);
    const bool isRead = QTest::qWaitFor([&] { return branches->Records().TotalCount() > 0; }, longest);
    picture(u"ventana-detalle"_s);
    return Problem(isRead, u"no hay sucursales debajo de la lista"_s);
  });
}

}  // namespace tour
