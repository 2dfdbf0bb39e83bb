#include "host/cli/MailingOptions.h"

#include "platform/automation/Error.h"

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

bool TakeLabelOption(const QString& name, const std::function<QString()>& value, LabelWish& wish) {
  if (name == u"--hoja"_s) {
    wish.sheet = Number(name, value());
  } else if (name == u"--desde"_s) {
    wish.start.first = Number(name, value());
  } else if (name == u"--saltar"_s) {
    for (const QString& label : value().split(u',')) {
      wish.start.skipped.insert(Number(name, label.trimmed()));
    }
  } else {
    return false;
  }
  return true;
}

void CheckCommon(const MailingOptions& options, int places) {
  if (options.letters.selection.isEmpty()) {
    Refuse(u"Diga a quién con la opción «--seleccion»."_s);
  }
  if (places != 1) {
    Refuse(u"Diga una sola vez dónde se escribe: «--pdf», «--pdf-por-persona» o «--rtf-por-persona»."_s);
  }
}

}  // namespace

bool TakeMailingFlag(const QString& name, MailingOptions& options) {
  if (name == u"--aceptar"_s) {
    options.accepts = true;
  } else if (name == u"--una-por-domicilio"_s) {
    options.letters.onePerAddress = options.labels.onePerAddress = true;
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
  } else if (!TakeLetterOption(name, value, options.letters) && !TakeLabelOption(name, value, options.labels)) {
    return false;
  }
  options.given = true;
  return true;
}

void CheckLetterOptions(const MailingOptions& options) {
  const auto isGiven = [](const QString& place) { return place.isEmpty() ? 0 : 1; };
  if (options.letters.letter == 0) {
    Refuse(u"Diga qué carta con la opción «--carta»."_s);
  }
  if (options.labels.sheet != 0 || options.labels.start.first != 1 || !options.labels.start.skipped.isEmpty()) {
    Refuse(u"Las opciones «--hoja», «--desde» y «--saltar» solo sirven con la orden «etiquetas»."_s);
  }
  CheckCommon(options, isGiven(options.pdf) + isGiven(options.pdfPerPerson) + isGiven(options.rtfPerPerson));
}

void CheckLabelOptions(const MailingOptions& options) {
  if (options.labels.sheet == 0) {
    Refuse(u"Diga qué hoja con la opción «--hoja»."_s);
  }
  if (options.letters.letter != 0 || !options.pdfPerPerson.isEmpty() || !options.rtfPerPerson.isEmpty()) {
    Refuse(u"Las etiquetas se escriben en un solo archivo, con la opción «--pdf»."_s);
  }
  CheckCommon(options, options.pdf.isEmpty() ? 0 : 1);
}

}  // namespace host
