#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace support {

/// A print server (CUPS) of the object's own on a socket in a folder of its own; the process's print jobs go there from
/// now on. Its printers: "oficina", which usually makes pages fit its margins and has the trays "top" and "bottom" and
/// both sides; "parada", which is stopped; "cerrada", which takes no jobs. What is printed lands in files.
class PrintServer {
 public:
  /// Throws std::runtime_error where the server does not start.
  PrintServer();
  PrintServer(const PrintServer&) = delete;
  PrintServer& operator=(const PrintServer&) = delete;
  ~PrintServer();

  /// Stops the printer, as somebody at it does.
  static void Pause(const char* printer);
  /// Ends the server.
  void End();

  /// What the printer got.
  struct Delivery {
    QString options;  ///< Words with blanks around each: " copies=2 InputSlot=Lower ", whoever makes the copies.
    QString pdf;      ///< The file.
  };
  /// Waits for it. Throws std::runtime_error for a job that does not come.
  Delivery Delivered(int job) const;
  /// All that the server has written down.
  QString Logs() const;

 private:
  void Write(const QString& name, const QByteArray& content) const;

  QTemporaryDir m_folder;
  QProcess m_server;
};

}  // namespace support
