#include "support/PrintServer.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <cups/cups.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <csignal>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace support {

namespace {

constexpr const char* installed = "/usr/lib/cups";

// Root's server filters as another user, with the same rights as everybody.
constexpr const char* files = R"(SystemGroup root
ServerRoot @
ServerBin @/bin
RequestRoot @/spool
TempDir @/spool/tmp
CacheDir @/cache
StateDir @/state
AccessLog @/access_log
ErrorLog @/error_log
PageLog @/page_log
Printcap
)";

constexpr const char* server = R"(Listen @/socket
LogLevel debug2
PageLogFormat %p %u %j %T %P %C %{job-name}
AccessLogLevel all
Browsing No
WebInterface No
DefaultAuthType None
<Location />
Order allow,deny
Allow all
</Location>
<Policy default>
JobPrivateAccess all
JobPrivateValues none
SubscriptionPrivateAccess all
SubscriptionPrivateValues none
<Limit All>
Order allow,deny
Allow all
</Limit>
</Policy>
)";

constexpr const char* printers = R"(<DefaultPrinter oficina>
Info Oficina
DeviceURI kel:/
State Idle
Accepting Yes
Option print-scaling fit
Option fit-to-page true
</DefaultPrinter>
<Printer parada>
Info Parada
DeviceURI kel:/
State Stopped
Accepting Yes
</Printer>
<Printer cerrada>
Info Cerrada
DeviceURI kel:/
State Idle
Accepting No
</Printer>
)";

constexpr const char* description = R"ppd(*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*FileVersion: "1.0"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*PCFileName: "OFICINA.PPD"
*Manufacturer: "Kel"
*Product: "(Oficina)"
*ModelName: "Oficina"
*NickName: "Oficina"
*PSVersion: "(3010) 0"
*LanguageLevel: "3"
*ColorDevice: False
*DefaultColorSpace: Gray
*FileSystem: False
*cupsFilter2: "application/vnd.cups-pdf application/pdf 0 -"
*OpenUI *PageSize: PickOne
*DefaultPageSize: A4
*PageSize A4/A4: ""
*CloseUI: *PageSize
*OpenUI *PageRegion: PickOne
*DefaultPageRegion: A4
*PageRegion A4/A4: ""
*CloseUI: *PageRegion
*DefaultImageableArea: A4
*ImageableArea A4/A4: "36 36 559 806"
*DefaultPaperDimension: A4
*PaperDimension A4/A4: "595 842"
*OpenUI *InputSlot/Tray: PickOne
*DefaultInputSlot: Upper
*InputSlot Upper/Upper Tray: ""
*InputSlot Lower/Lower Tray: ""
*CloseUI: *InputSlot
*OpenUI *Duplex/Two-sided: PickOne
*DefaultDuplex: None
*Duplex None/Off: ""
*Duplex DuplexNoTumble/Long: ""
*Duplex DuplexTumble/Short: ""
*CloseUI: *Duplex
)ppd";

// Called with job, user, title, copies, options and a file or its content; without anything it says what it is.
constexpr const char* backend = R"(#!/bin/sh
[ $# != 0 ] || { echo 'direct kel "Kel" "Kel"'; exit 0; }
cat "${6:--}" >'@/printed/'$1.pdf
echo "copies=$4 $5" >'@/printed/'$1.part
mv '@/printed/'$1.part '@/printed/'$1.txt
)";

}  // namespace

PrintServer::PrintServer() {
  chmod(QFile::encodeName(m_folder.path()).constData(), S_IRWXU | S_IXGRP | S_IXOTH);
  for (const char* folder : {"bin/backend", "spool/tmp", "cache", "state", "ppd", "printed"}) {
    QDir(m_folder.path()).mkpath(QLatin1StringView(folder));
  }
  for (const QString& program : {u"filter"_s, u"daemon"_s}) {
    QFile::link(QString::fromLatin1(installed) + u'/' + program, m_folder.filePath(u"bin/"_s + program));
  }
  Write(u"files.conf"_s, files);
  Write(u"server.conf"_s, server);
  Write(u"printers.conf"_s, printers);
  Write(u"ppd/oficina.ppd"_s, description);
  Write(u"bin/backend/kel"_s, backend);
  // For nobody else, so that root's server runs it as root and it may write here.
  QFile::setPermissions(m_folder.filePath(u"bin/backend/kel"_s),
                        QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  m_server.setProcessChannelMode(QProcess::ForwardedChannels);
  m_server.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
  m_server.start(u"/usr/sbin/cupsd"_s,
                 {u"-f"_s, u"-c"_s, m_folder.filePath(u"server.conf"_s), u"-s"_s, m_folder.filePath(u"files.conf"_s)});
  const QString socket = m_folder.filePath(u"socket"_s);
  if (!QTest::qWaitFor([&] { return QFile::exists(socket); }, 20'000)) {
    throw std::runtime_error("no print server");
  }
  qputenv("CUPS_SERVER", QFile::encodeName(socket));
  // This thread may have asked another one before.
  cupsSetServer(QFile::encodeName(socket));
}

PrintServer::~PrintServer() {
  End();
}

void PrintServer::End() {
  m_server.terminate();
  if (!m_server.waitForFinished()) {
    m_server.kill();
    m_server.waitForFinished();
  }
}

void PrintServer::Write(const QString& name, const QByteArray& content) const {
  QFile file(m_folder.filePath(name));
  if (!file.open(QFile::WriteOnly) ||
      file.write(QByteArray(content).replace('@', QFile::encodeName(m_folder.path()))) < 0) {
    throw std::runtime_error("no file of the print server");
  }
}

void PrintServer::Pause(const char* printer) {
  ipp_t* request = ippNewRequest(IPP_OP_PAUSE_PRINTER);
  ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr,
               QByteArray("ipp://localhost/printers/").append(printer).constData());
  ippDelete(cupsDoRequest(CUPS_HTTP_DEFAULT, request, "/admin/"));
  if (cupsLastError() > IPP_STATUS_OK_CONFLICTING) {
    throw std::runtime_error(cupsLastErrorString());
  }
}

PrintServer::Delivery PrintServer::Delivered(int job) const {
  QFile options(m_folder.filePath(u"printed/%1.txt"_s.arg(job)));
  if (!QTest::qWaitFor([&] { return options.exists(); }, 30'000) || !options.open(QFile::ReadOnly)) {
    throw std::runtime_error("nothing was printed");
  }
  return {.options = u' ' + QString::fromUtf8(options.readAll()).simplified() + u' ',
          .pdf = m_folder.filePath(u"printed/%1.pdf"_s.arg(job))};
}

QString PrintServer::Logs() const {
  QString logs;
  for (const QString& name : {u"access_log"_s, u"error_log"_s, u"page_log"_s}) {
    QFile file(m_folder.filePath(name));
    logs += file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
  }
  return logs;
}

}  // namespace support
