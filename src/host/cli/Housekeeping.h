#pragma once

#include "host/access/OfficePolicy.h"

#include <QObject>
#include <QString>
#include <QThread>

#include <memory>

namespace host {

/// What a start owes the database file, beside the user's work, in a thread of its own: a quick check after an unclean
/// end, the copy of the day, and letting old notes of the change log go.
class Housekeeping : public QObject {
  Q_OBJECT

 public:
  struct Duties {
    bool check = false;
    bool copy = false;
    bool forget = false;
  };

  Housekeeping(const QString& connectionString, Duties duties);
  /// Ends the work in progress; a copy that is not whole leaves nothing.
  ~Housekeeping() override;

  void Start();

 Q_SIGNALS:
  /// Something that the user should know, in Spanish. Comes from the thread of the work.
  void Noticed(const QString& text);

 private:
  void Check();
  void Copy();
  void ForgetOldChanges() const;
  OfficePolicy Policy() const;

  QString m_connectionString;
  Duties m_duties;
  std::unique_ptr<QThread> m_thread;
};

}  // namespace host
