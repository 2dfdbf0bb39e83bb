#include "host/cli/MailingOptions.h"

#include "platform/automation/Error.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

int Number(const QString& name, const QString& value) {
  bool valid = false;
  const int number = value.toInt(&valid);
  if (!valid || number < 1) {
    Refuse(u"«%1» no sirve como valor de «%2»: tiene que ser un número entero desde 1."_s.arg(value, name));
  }
  return number;
}

QDate Date(const QString& name, const QString& value) {
  const QDate date = QDate::fromString(value, Qt::ISODate);
  if (!date.isValid()) {
    Refuse(u"«%1» no sirve como valor de «%2»: escriba la fecha como 2026-01-31."_s.arg(value, name));
  }
  return date;
}

template <typename Value>
Value OneOf(const QString& name, const QString& value, std::initializer_list<std::pair<QStringView, Value>> words) {
  QStringList known;
  for (const auto& [word, meaning] : words) {
    if (value == word) {
      return meaning;
    }
    known.append(word.toString());
  }
  Refuse(u"«%1» no sirve como valor de «%2»: use %3."_s.arg(value, name, known.join(u" o "_s)));
}

bool TakeLetterOption(const QString& name, const std::function<QString()>& value, LetterWish& wish) {
  using documents::Subject;
  if (name == u"--carta"_s) {
    wish.letter = Number(name, value());
  } else if (name == u"--fecha"_s) {
    wish.moment = Date(name, value()).startOfDay();
  } else if (name == u"--donativos-desde"_s) {
    wish.from = Date(name, value());
  } else if (name == u"--donativos-hasta"_s) {
    wish.until = Date(name, value());
  } else if (name == u"--ejercicio"_s) {
    wish.year = Number(name, value());
  } else if (name == u"--para"_s) {
    wish.subject =
        OneOf<Subject>(name, value(), {{u"donativos", Subject::Donation}, {u"suscripciones", Subject::Subscription}});
  } else if (name == u"--periodicidad"_s) {
    wish.donationPeriod = value();
  } else if (name == u"--receptor"_s) {
    wish.receiver = value();
  } else {
    return false;
  }
  return true;
}

QList<int> Numbers(const QString& name, const QString& value) {
  QList<int> numbers;
  for (const QString& number : value.split(u',')) {
    numbers.append(Number(name, number.trimmed()));
  }
  return numbers;
}

/// "3", "3-7", "3-" or "-7"
PageRange Pages(const QString& name, const QString& value) {
  const QString first = value.section(u'-', 0, 0).trimmed();
  const QString last = value.section(u'-', 1).trimmed();
  const bool isOne = !value.contains(u'-');
  const PageRange range{.first = first.isEmpty() && !isOne ? 1 : Number(name, first),
                        .last = isOne            ? Number(name, first)
                                : last.isEmpty() ? 0
                                                 : Number(name, last)};
  if (value.trimmed() == u"-"_s || (range.last > 0 && range.last < range.first)) {
    Refuse(u"«%1» no sirve como valor de «%2»: escriba, por ejemplo, 3-7."_s.arg(value, name));
  }
  return range;
}

bool TakePrintOption(const QString& name, const std::function<QString()>& value, PrintWish& wish) {
  constexpr int mostCopies = 999;
  if (name == u"--impresora"_s) {
    wish.queue = value();
  } else if (name == u"--bandeja"_s) {
    wish.tray = value();
  } else if (name == u"--paginas"_s) {
    wish.pages = Pages(name, value());
  } else if (name == u"--copias"_s) {
    wish.copies = std::min(mostCopies, Number(name, value()));
  } else {
    return false;
  }
  return true;
}

bool TakeLabelOption(const QString& name, const std::function<QString()>& value, LabelWish& wish) {
  if (name == u"--hoja"_s) {
    wish.sheet = Number(name, value());
  } else if (name == u"--desde"_s) {
    wish.start.first = Number(name, value());
  } else if (name == u"--saltar"_s) {
    const QList<int> labels = Numbers(name, value());
    wish.start.skipped = QSet<int>(labels.begin(), labels.end());
  } else if (name == u"--cuantas"_s) {
    constexpr int mostLabels = 10000;
    wish.copies = std::min(mostLabels, Number(name, value()));
  } else if (name == u"--discos"_s) {
    wish.disks.disks = Numbers(name, value());
  } else if (name == u"--emisor"_s) {
    wish.disks.issuers = Numbers(name, value());
  } else {
    return false;
  }
  return true;
}

int CountOfPlaces(const MailingOptions& options) {
  int count = 0;
  for (const QString& place : {options.pdf, options.pdfPerPerson, options.rtfPerPerson, options.printing.queue}) {
    count += place.isEmpty() ? 0 : 1;
  }
  return count;
}

void CheckPrinting(const MailingOptions& options) {
  const PrintWish& wish = options.printing;
  const bool saysHow =
      wish.bothSides || wish.copies != 1 || !wish.tray.isEmpty() || wish.pages.first != 1 || wish.pages.last != 0;
  if (wish.queue.isEmpty() && saysHow) {
    Refuse(u"Las opciones «--bandeja», «--doble-cara», «--paginas» y «--copias» solo sirven con «--impresora»."_s);
  }
}

bool SaysWhichLabels(const MailingOptions& options) {
  const LabelWish& wish = options.labels;
  return wish.sheet != 0 || wish.start.first != 1 || !wish.start.skipped.isEmpty() || wish.copies != 1 ||
         !wish.disks.disks.isEmpty() || !wish.disks.issuers.isEmpty() || options.fromLast || options.remembers;
}

}  // namespace

bool TakeMailingFlag(const QString& name, MailingOptions& options) {
  if (name == u"--aceptar"_s) {
    options.accepts = true;
  } else if (name == u"--una-por-domicilio"_s) {
    options.letters.onePerAddress = options.labels.onePerAddress = true;
  } else if (name == u"--doble-cara"_s) {
    options.printing.bothSides = true;
  } else if (name == u"--desde-la-ultima"_s) {
    options.fromLast = true;
  } else if (name == u"--recordar"_s) {
    options.remembers = true;
  } else if (name == u"--sin-direccion"_s) {
    options.letters.withoutAddressToo = options.labels.withoutAddressToo = true;
  } else {
    return false;
  }
  options.given = true;
  return true;
}

bool TakeMailingOption(const QString& name, const std::function<QString()>& value, MailingOptions& options) {
  if (name == u"--seleccion"_s) {
    options.letters.selection = options.labels.selection = value();
  } else if (name == u"--orden"_s) {
    options.letters.order = options.labels.order = OneOf<PeopleOrder>(
        name, value(),
        {{u"apellidos", PeopleOrder::Surname}, {u"codigo", PeopleOrder::Postcode}, {u"numero", PeopleOrder::Number}});
  } else if (name == u"--pdf"_s) {
    options.pdf = value();
  } else if (name == u"--pdf-por-persona"_s) {
    options.pdfPerPerson = value();
  } else if (name == u"--rtf-por-persona"_s) {
    options.rtfPerPerson = value();
  } else if (name == u"--cabecera"_s) {
    options.letters.letterhead = options.labels.letterhead = Number(name, value());
  } else if (!TakeLetterOption(name, value, options.letters) && !TakeLabelOption(name, value, options.labels) &&
             !TakePrintOption(name, value, options.printing)) {
    return false;
  }
  options.given = true;
  return true;
}

void CheckLetterOptions(const MailingOptions& options) {
  if (options.letters.letter == 0) {
    Refuse(u"Diga qué carta con la opción «--carta»."_s);
  }
  if (SaysWhichLabels(options)) {
    Refuse(
        u"Las opciones «--hoja», «--desde», «--saltar», «--desde-la-ultima», «--recordar», «--cuantas», «--discos» y "
        "«--emisor» solo sirven con la orden «etiquetas»."_s);
  }
  if (options.letters.selection.isEmpty()) {
    Refuse(u"Diga a quién con la opción «--seleccion»."_s);
  }
  if (CountOfPlaces(options) != 1) {
    Refuse(u"Diga una sola vez dónde se escribe: «--pdf», «--pdf-por-persona», «--rtf-por-persona» o «--impresora»."_s);
  }
  CheckPrinting(options);
}

void CheckLabelOptions(const MailingOptions& options) {
  const LabelWish& wish = options.labels;
  if (wish.sheet == 0) {
    Refuse(u"Diga qué hoja con la opción «--hoja»."_s);
  }
  if (options.letters.letter != 0 || !options.pdfPerPerson.isEmpty() || !options.rtfPerPerson.isEmpty()) {
    Refuse(u"Las etiquetas van a un solo archivo, con «--pdf», o a la impresora, con «--impresora»."_s);
  }
  if (!wish.selection.isEmpty() && wish.letterhead != 0) {
    Refuse(u"Use «--seleccion», para personas, o «--cabecera», para el remite; no las dos opciones a la vez."_s);
  }
  if (options.fromLast && wish.start.first != 1) {
    Refuse(u"Use «--desde» o «--desde-la-ultima», no las dos opciones a la vez."_s);
  }
  if (options.printing.bothSides) {
    Refuse(u"Las etiquetas se imprimen por una cara."_s);
  }
  if (CountOfPlaces(options) != 1) {
    Refuse(u"Diga una sola vez dónde se escribe: «--pdf» o «--impresora»."_s);
  }
  CheckPrinting(options);
}

}  // namespace host
