#include "tour/Tour.h"

#include "host/services/ServiceClasses.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"
#include "platform/automation/Invoke.h"

#include <QDir>
#include <QTextStream>

#include <utility>

using namespace Qt::StringLiterals;

namespace tour {
namespace {

// A letter fills pages; its beginning says which it is.
QString FirstLine(const QString& text) {
  constexpr qsizetype longest = 500;
  const QString line = text.section(u'\n', 0, 0).trimmed().left(longest);
  return line.size() < text.size() ? line + u" …"_s : line;
}

}  // namespace

Tour::Tour(const QString& folder) : m_folder(folder) {
  QDir(folder).removeRecursively();
  QDir().mkpath(folder);
  MoveInto(OpenOffice(u"demostracion.db"_s, database::Content::Demonstration));
  m_session.title = u"Configuración"_s;
  m_session.userId = 1;
  m_session.userName = u"Administrador"_s;
  m_session.userKind = 1;
  m_session.settingsFile = folder + u"/ajustes.ini"_s;
  host::RegisterClasses(m_session);
  m_services = std::make_unique<host::cPrincipal>(m_session);
}

Tour::~Tour() {
  host::UnregisterClasses();
}

Tour::Office Tour::OpenOffice(const QString& file, database::Content content) const {
  const QString connection = database::ConnectionStringForFile(m_folder + u'/' + file);
  database::PrepareDatabase(connection, content);
  Office office;
  office.real = database::CreateConnection(connection);
  office.reader = database::CreateConnection(connection);
  office.reader->Open();
  office.recording = std::make_unique<support::RecordingConnection>(*office.real);
  return office;
}

void Tour::MoveInto(Office office) {
  m_office = std::move(office);
  m_session.connection = m_office.recording.get();
}

void Tour::OnANewDatabase(const QString& file, const std::function<void()>& walk) {
  Office before = std::exchange(m_office, {});
  MoveInto(OpenOffice(file, database::Content::Reference));
  walk();
  MoveInto(std::move(before));
}

void Tour::OnAnEmptyDatabase(const std::function<void()>& walk) {
  OnANewDatabase(u"vacia.db"_s, [&] {
    m_office.reader->Execute(u"DELETE FROM Paises"_s);
    m_office.reader->Execute(u"DELETE FROM Provincias"_s);
    walk();
  });
}

void Tour::Step(const QString& title, const Request& request, const QString& query, const QStringList& expected) {
  const auto ask = [&] {
    automation::Put(m_services.get(), "IDNodo", request.node);
    automation::Put(m_services.get(), "Accion", request.action);
    automation::Put(m_services.get(), "IDSeleccionado", request.id);
    automation::Put(m_services.get(), "IDAux", request.aux);
    const auto component = automation::CreateObject(u"KelConfiguracion.CPrincipal"_s);
    automation::Call(component.get(), request.deletes ? "EliminarRegistro" : "PasarDatos", m_services.get());
    return QStringList();
  };
  Act(title, ask, query, expected);
}

void Tour::Act(const QString& title, const std::function<QStringList()>& work, const QString& query,
               const QStringList& expected) {
  Result result{.title = title, .written = {}, .problems = {}};
  m_office.recording->Clear();
  try {
    result.problems = work();
  } catch (const automation::Error& error) {
    result.problems.append(u"error %1: %2"_s.arg(error.Number()).arg(error.Description()));
  }
  result.problems += m_driver.TakeProblems();
  m_driver.TakeBoxes();
  result.written = m_office.recording->Writes();
  result.written.removeIf([](const QString& statement) { return statement.contains(u"BloqueoRegistros"); });
  if (!query.isEmpty() && Rows(query) != expected) {
    result.problems.append(u"se esperaba [%1] y hay [%2]"_s.arg(expected.join(u"; "_s), Rows(query).join(u"; "_s)));
  }
  m_results.append(result);
}

void Tour::Picture(const support::DialogUser& dialog, const QString& name) {
  dialog.Screenshot(m_folder + u'/' + name + u".png"_s);
}

QStringList Tour::Rows(const QString& query) {
  QStringList lines;
  const auto rows = m_office.reader->Execute(query);
  for (; !rows->AtEnd(); rows->MoveNext()) {
    QStringList values;
    for (int i = 0; i < rows->FieldCount(); ++i) {
      values.append(automation::Text(rows->Field(i)));
    }
    lines.append(values.join(u'|'));
  }
  return lines;
}

bool Tour::Report() const {
  QTextStream out(stdout);
  qsizetype failed = 0;
  out << "Paso                                               | Escrito en la base de datos\n"
      << QString(51, u'-') << '+' << QString(80, u'-') << '\n';
  for (const Result& result : m_results) {
    QStringList lines = result.written.isEmpty() ? QStringList(u"(nada)"_s) : result.written;
    for (const QString& problem : result.problems) {
      lines.append(u"FALLO: "_s + problem);
    }
    failed += result.problems.isEmpty() ? 0 : 1;
    for (qsizetype i = 0; i < lines.size(); ++i) {
      out << (i == 0 ? result.title : QString()).leftJustified(50, u' ', true) << " | " << FirstLine(lines[i]) << '\n';
    }
  }
  out << m_results.size() - failed << " pasos bien, " << failed << " con fallos. Imágenes en " << m_folder << '\n';
  return failed == 0;
}

}  // namespace tour
