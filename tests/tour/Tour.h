#pragma once

#include "support/Driver.h"
#include "support/RecordingConnection.h"

#include "database/Database.h"
#include "host/records/Session.h"
#include "host/services/cPrincipal.h"
#include "platform/adodb/Statement.h"

#include <functional>
#include <memory>

namespace tour {

/// A walk through the component's dialogs on a fresh demonstration database, with the component created by name from
/// its library. Each step makes one request, uses the dialogs that it opens, takes their pictures, and says what it
/// wrote.
class Tour {
 public:
  /// `folder` receives the database and the pictures; what was there of an earlier tour is replaced. The component
  /// library must be in the class registry.
  explicit Tour(const QString& folder);
  Tour(const Tour&) = delete;
  Tour& operator=(const Tour&) = delete;
  ~Tour();

  struct Request {
    int node = 0;
    int action = 0;
    int id = 0;
    QVariant aux = 0;
    bool deletes = false;  ///< EliminarRegistro instead of PasarDatos.
  };

  /// Makes the request. Afterwards `query` must answer `expected`, rows as "value|value"; an empty query is not asked.
  void Step(const QString& title, const Request& request, const QString& query, const QStringList& expected);

  /// Does something else, with what `work` returns as its problems.
  void Act(const QString& title, const std::function<QStringList()>& work, const QString& query = {},
           const QStringList& expected = {});

  support::Driver& Windows() { return m_driver; }
  /// A dialog's picture, as NAME.png in the folder.
  void Picture(const support::DialogUser& dialog, const QString& name);
  /// A path in the folder.
  QString File(const QString& name) const { return m_folder + u'/' + name; }
  /// The first value of the first row, as a number.
  template <typename... Values>
  int Id(std::type_identity_t<adodb::Statement<Values...>> query, const Values&... values) {
    return Rows(query.Text(values...)).value(0).toInt();
  }
  QStringList Rows(const QString& query);

  /// Runs `walk` on another database, a new one of that name in the folder.
  void OnANewDatabase(const QString& file, const std::function<void()>& walk);
  /// Runs `walk` on another database, which has no country, province, bank or party in it.
  void OnAnEmptyDatabase(const std::function<void()>& walk);

  /// Prints the table of the steps; true when none failed.
  bool Report() const;

 private:
  struct Result {
    QString title;
    QStringList written;
    QStringList problems;
  };

  // A database as the dialogs and as the tour's own queries reach it.
  struct Office {
    std::unique_ptr<adodb::Connection> real;
    std::unique_ptr<adodb::Connection> reader;
    std::unique_ptr<support::RecordingConnection> recording;
  };
  Office OpenOffice(const QString& file, database::Content content) const;
  void MoveInto(Office office);

  QString m_folder;
  Office m_office;
  host::Session m_session;
  std::unique_ptr<host::cPrincipal> m_services;
  support::Driver m_driver;
  QList<Result> m_results;
};

}  // namespace tour
