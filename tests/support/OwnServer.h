#pragma once

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace support {

/// A server of the object's own; databases are made there as long as it lives.
class OwnServer {
 public:
  /// `kind` is the third word of tests/support/postgres.sh.
  explicit OwnServer(const QString& kind = {}) : m_others(qgetenv("KEL_POSTGRES")) {
    Control(QStringLiteral("start"), kind);
    qputenv("KEL_POSTGRES", QFile::encodeName(Place()));
  }
  OwnServer(const OwnServer&) = delete;
  OwnServer& operator=(const OwnServer&) = delete;
  ~OwnServer() {
    qputenv("KEL_POSTGRES", m_others);
    Control(QStringLiteral("stop"));
  }

 private:
  QString Place() const { return m_folder.filePath(QStringLiteral("place")); }
  void Control(const QString& action, const QString& kind = {}) const {
    QProcess::execute(qEnvironmentVariable("KEL_DATOS") + QStringLiteral("/../support/postgres.sh"),
                      {action, Place(), kind});
  }

  QTemporaryDir m_folder;
  QByteArray m_others;
};

}  // namespace support
