#include "host/mailing/printing/PrintQueues.h"

#include "platform/automation/Error.h"

#include <cups/cups.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

/// The destinations that the print server knows.
class Destinations {
 public:
  Destinations() : m_count(cupsGetDests2(CUPS_HTTP_DEFAULT, &m_all)) {}
  Destinations(const Destinations&) = delete;
  Destinations& operator=(const Destinations&) = delete;
  ~Destinations() { cupsFreeDests(m_count, m_all); }

  const cups_dest_t* begin() const { return m_all; }
  const cups_dest_t* end() const { return m_all + m_count; }
  cups_dest_t* Find(const QString& name) const { return cupsGetDest(name.toUtf8(), nullptr, m_count, m_all); }

 private:
  cups_dest_t* m_all = nullptr;
  int m_count;
};

class Options {
 public:
  Options() = default;
  Options(const Options&) = delete;
  Options& operator=(const Options&) = delete;
  ~Options() { cupsFreeOptions(m_count, m_all); }

  void Add(const char* name, const QByteArray& value) { m_count = cupsAddOption(name, value, m_count, &m_all); }
  int Count() const { return m_count; }
  cups_option_t* All() const { return m_all; }

 private:
  cups_option_t* m_all = nullptr;
  int m_count = 0;
};

QString OptionOf(const cups_dest_t& destination, const char* name) {
  return QString::fromUtf8(cupsGetOption(name, destination.num_options, destination.options));
}

QString TroubleOf(const cups_dest_t& destination) {
  constexpr int stopped = 5;
  if (OptionOf(destination, "printer-state").toInt() == stopped) {
    return u"La impresora «%1» está parada. Póngala en marcha y vuelva a intentarlo."_s.arg(
        QString::fromUtf8(destination.name));
  }
  if (OptionOf(destination, "printer-is-accepting-jobs") == u"false"_s) {
    return u"La impresora «%1» no admite trabajos. Elija otra, o pida que los admita."_s.arg(
        QString::fromUtf8(destination.name));
  }
  return {};
}

PrintQueue QueueOf(const cups_dest_t& destination) {
  const QString name = QString::fromUtf8(destination.name);
  const QString info = OptionOf(destination, "printer-info");
  return {.name = name,
          .title = info.isEmpty() ? name : info,
          .trouble = TroubleOf(destination),
          .isUsual = destination.is_default != 0};
}

QByteArray MediaOf(const QString& tray) {
  if (tray.isEmpty()) {
    return {};
  }
  // Hundredths of a millimetre.
  QByteArray word = tray.toUtf8();
  word.replace('\\', "\\\\").replace('"', "\\\"");
  return "{media-size={x-dimension=21000 y-dimension=29700} media-source=\"" + word + "\"}";
}

// A printer may usually scale, turn or put several pages on one.
void AskForSize(Options& options, const PrintJob& job) {
  options.Add("print-scaling", "none");
  options.Add("fit-to-page", "false");
  options.Add("number-up", "1");
  options.Add("sides", job.bothSides ? "two-sided-long-edge" : "one-sided");
  options.Add("copies", QByteArray::number(job.copies));
  const QByteArray media = MediaOf(job.tray);
  if (media.isEmpty()) {
    options.Add("media", "iso_a4_210x297mm");
  } else {
    options.Add("media-col", media);
  }
}

}  // namespace

QList<PrintQueue> PrintQueues() {
  QList<PrintQueue> queues;
  for (const cups_dest_t& destination : Destinations()) {
    if (destination.instance == nullptr) {
      queues.append(QueueOf(destination));
    }
  }
  return queues;
}

PrintQueue RequirePrintQueue(const QString& name) {
  const Destinations known;
  const cups_dest_t* destination = known.Find(name);
  if (destination == nullptr) {
    QStringList names;
    for (const PrintQueue& queue : PrintQueues()) {
      names.append(queue.name);
    }
    Refuse(names.isEmpty() ? u"No hay ninguna impresora «%1», ni otra: el sistema no tiene impresoras."_s.arg(name)
                           : u"No hay ninguna impresora «%1». Hay: %2."_s.arg(name, names.join(u", "_s)));
  }
  PrintQueue queue = QueueOf(*destination);
  if (!queue.trouble.isEmpty()) {
    Refuse(queue.trouble);
  }
  return queue;
}

QList<PrintTray> TraysOf(const QString& queue) {
  QList<PrintTray> trays;
  const Destinations known;
  cups_dest_t* destination = known.Find(queue);
  cups_dinfo_t* info = destination == nullptr ? nullptr : cupsCopyDestInfo(CUPS_HTTP_DEFAULT, destination);
  ipp_attribute_t* words =
      info == nullptr ? nullptr : cupsFindDestSupported(CUPS_HTTP_DEFAULT, destination, info, CUPS_MEDIA_SOURCE);
  for (int i = 0; i < ippGetCount(words); ++i) {
    const char* word = ippGetString(words, i, nullptr);
    const char* title = cupsLocalizeDestValue(CUPS_HTTP_DEFAULT, destination, info, CUPS_MEDIA_SOURCE, word);
    trays.append({QString::fromUtf8(word), QString::fromUtf8(title == nullptr ? word : title)});
  }
  cupsFreeDestInfo(info);
  return trays;
}

void RequireTray(const QString& queue, const QString& tray) {
  QStringList words;
  for (const PrintTray& known : TraysOf(queue)) {
    words.append(known.word);
  }
  if (!tray.isEmpty() && !words.contains(tray)) {
    Refuse(words.isEmpty()
               ? u"La impresora «%1» no deja elegir bandeja."_s.arg(queue)
               : u"La impresora «%1» no tiene bandeja «%2». Tiene: %3."_s.arg(queue, tray, words.join(u", "_s)));
  }
}

int SendToPrinter(const QString& pdf, const PrintJob& job) {
  Options options;
  AskForSize(options, job);
  const int number = cupsPrintFile2(CUPS_HTTP_DEFAULT, job.queue.toUtf8(), pdf.toLocal8Bit(), job.title.toUtf8(),
                                    options.Count(), options.All());
  if (number != 0) {
    return number;
  }
  RequirePrintQueue(job.queue);
  Refuse(
      u"La impresora «%1» no ha aceptado el trabajo, y no se ha impreso nada. Vuelva a intentarlo."_s.arg(job.queue));
}

}  // namespace host
