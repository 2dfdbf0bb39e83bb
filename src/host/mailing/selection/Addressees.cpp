#include "host/mailing/selection/Addressees.h"

#include "documents/people/Names.h"
#include "documents/people/Posting.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

#include <algorithm>
#include <ranges>

using namespace Qt::StringLiterals;

using adodb::Verbatim;
using documents::Person;
using documents::Posting;

namespace host {

namespace {

constexpr int homeCountry = 35;

QString OrderOf(PeopleOrder order) {
  switch (order) {
    case PeopleOrder::Postcode:
      return u"IIF(NZ(Colaboradores.codpais, 0)=35, 0, NZ(Colaboradores.codpais, 0)), Colaboradores.CP, "
             " Colaboradores.Apellido1, Colaboradores.Apellido2, Colaboradores.Nombre, "
             "Colaboradores.IDColaborador"_s;
    case PeopleOrder::Number:
      return u"Colaboradores.IDColaborador"_s;
    default:
      return u"Colaboradores.Apellido1, Colaboradores.Apellido2, Colaboradores.Nombre, Colaboradores.IDColaborador"_s;
  }
}

Person PersonAt(adodb::Recordset& row) {
  int column = 0;
  const auto next = [&] { return automation::Text(row.Field(column++)); };
  Person person;
  person.id = automation::CLng(row.Field(column++));
  person.title = next();
  person.firstName = next();
  person.surname = next();
  person.secondSurname = next();
  person.taxNumber = next();
  person.address.street = next();
  person.address.town = next();
  person.address.postcode = next();
  person.address.province = next();
  person.address.provincePrefix = next();
  person.address.country = next();
  person.heading = next();
  person.headingKind = next();
  const QVariant country = row.Field(column);
  const int key = automation::IsNull(country) ? 0 : automation::CLng(country);
  person.address.isAbroad = key != 0 && key != homeCountry;
  return person;
}

/// Everybody who meets the conditions or was taken by hand.
QString ClauseOf(const SavedSelection& selection) {
  const QString conditions = ClauseOf(selection.conditions);
  QStringList taken;
  for (auto person = selection.people.cbegin(); person != selection.people.cend(); ++person) {
    if (person.value()) {
      taken.append(QString::number(person.key()));
    }
  }
  return conditions.isEmpty() || taken.isEmpty()
             ? conditions
             : adodb::StatementText(u" AND ((1=1{}) OR Colaboradores.IDColaborador IN ({}))", Verbatim{conditions},
                                    Verbatim{taken.join(u',')});
}

bool GetsMail(const Person& person, const MailingWish& wish, MailingNotes& notes) {
  const QString name = NameInLists(person);
  if (documents::PostingOf(person.address) == Posting::Impossible && !wish.withoutAddressToo) {
    notes.leftOut.append({person.id, name, WhatIsMissing(person.address)});
    return false;
  }
  const QString doubt = DoubtAbout(person.address);
  if (!doubt.isEmpty()) {
    notes.doubtful.append({person.id, name, doubt});
  }
  return true;
}

}  // namespace

QString WhatIsMissing(const documents::PostalAddress& address) {
  if (address.street.trimmed().isEmpty()) {
    return u"sin dirección"_s;
  }
  return address.town.trimmed().isEmpty() ? u"sin población"_s : u"sin código postal"_s;
}

QString DoubtAbout(const documents::PostalAddress& address) {
  if (address.isAbroad && address.country.trimmed().isEmpty()) {
    return u"su país ya no existe"_s;
  }
  return documents::PostingOf(address) == Posting::Doubtful ? u"código postal dudoso, «%1»"_s.arg(address.postcode)
                                                            : QString();
}

QStringList Sentences(const QList<PersonNote>& notes) {
  QStringList sentences;
  for (const PersonNote& note : notes) {
    sentences.append(u"%1: %2"_s.arg(note.name, note.reason));
  }
  return sentences;
}

SavedSelection SelectionOf(adodb::Connection& connection, const MailingWish& wish, int userId) {
  if (!wish.chosen) {
    return ReadSelection(connection, wish.selection, userId);
  }
  RequireRecords(connection, *wish.chosen);
  return *wish.chosen;
}

QString NameInLists(const Person& person) {
  const QString name = documents::LastNameFirst(person);
  return u"%1 (%2)"_s.arg(name.isEmpty() ? u"Sin nombre"_s : name, QString::number(person.id));
}

std::vector<Person> ReadPeople(adodb::Connection& connection, const SavedSelection& selection, PeopleOrder order) {
  const auto rows = adodb::Execute(
      connection,
      u"SELECT Colaboradores.IDColaborador, Colaboradores.Tratamiento, Colaboradores.Nombre, Colaboradores.Apellido1, "
      u"Colaboradores.Apellido2, Colaboradores.NIF, Colaboradores.Direccion, Colaboradores.Poblacion, "
      u"Colaboradores.CP, "
      u"Provincias.Nombre AS Provincia, Provincias.Prefijo, Paises.Nombre AS Pais, Encabezados.Nombre AS Encabezado, "
      u"Encabezados.Descripcion, Colaboradores.codpais FROM ((Colaboradores LEFT JOIN Provincias ON "
      u"Colaboradores.CodProvincia=Provincias.IDProvincia) LEFT JOIN Paises ON Colaboradores.codpais=Paises.IDPais) "
      u"LEFT "
      u"JOIN Encabezados ON Colaboradores.CodEncabezado=Encabezados.IDEncabezado WHERE Colaboradores.Eliminado=0{} "
      u"ORDER "
      u"BY {}",
      Verbatim{ClauseOf(selection)}, Verbatim{OrderOf(order)});
  std::vector<Person> people;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    Person person = PersonAt(*rows);
    if (selection.Takes(person.id)) {
      people.push_back(std::move(person));
    }
  }
  return people;
}

std::vector<Addressee> AddresseesOf(const std::vector<Person>& people, const MailingWish& wish, MailingNotes& notes) {
  QList<Person> reachable;
  for (const Person& person : people) {
    if (GetsMail(person, wish, notes)) {
      reachable.append(person);
    }
  }
  std::vector<Addressee> addressees;
  if (!wish.onePerAddress) {
    for (const Person& person : reachable) {
      addressees.push_back({person});
    }
    return addressees;
  }
  for (const QList<int>& household : documents::Households(reachable)) {
    Addressee together;
    for (const int member : household) {
      together.append(reachable[member]);
    }
    addressees.push_back(together);
  }
  return addressees;
}

}  // namespace host
