#include "host/mailing/pieces/LetterMailing.h"

#include "documents/letter/LetterPainter.h"
#include "documents/letter/LetterStrips.h"
#include "documents/people/Names.h"
#include "documents/people/Posting.h"
#include "documents/people/Salutation.h"
#include "documents/people/SpanishDates.h"
#include "documents/rtf/Rtf.h"
#include "host/mailing/pieces/Letterhead.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"
#include "platform/text/Counted.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using documents::Marker;
using documents::Subject;

namespace host {

namespace {

// Some seventy pages. Each letter is filled and laid out when it is looked at.
constexpr int mostCharacters = 200'000;

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

QString SubjectName(Subject subject) {
  switch (subject) {
    case Subject::Donation:
      return u"de un donativo"_s;
    case Subject::Subscription:
      return u"de una suscripción"_s;
    case Subject::TaxReturn:
      return u"del modelo 182"_s;
    default:
      return u"de la persona"_s;
  }
}

double Margin(const QVariant& stored, double usual) {
  return automation::IsNumeric(stored) ? automation::CDbl(stored) : usual;
}

}  // namespace

LetterMailing::LetterMailing(adodb::Connection& connection, const LetterWish& wish, int userId)
    : m_moment(wish.moment), m_donationPeriod(wish.donationPeriod), m_receiver(wish.receiver) {
  ReadInstallation(connection);
  ReadTemplate(connection, wish);
  ChooseSubject(wish);
  MakePieces(connection, wish, SelectionOf(connection, wish, userId));
}

void LetterMailing::ReadInstallation(adodb::Connection& connection) {
  const auto row = adodb::Execute(connection, u"SELECT Tipo, velumar FROM configuracion");
  if (!row->AtEnd()) {
    m_namesTitles = automation::CLng(row->Field(0)) == 1;
    m_velumar = automation::CBool(row->Field(1));
  }
  const auto heading = adodb::Execute(
      connection, u"SELECT Nombre FROM Encabezados WHERE Descripcion='Matrimonio' ORDER BY IDEncabezado");
  m_jointHeading = heading->AtEnd() ? QString() : automation::Text(heading->Field(0));
}

void LetterMailing::ReadTemplate(adodb::Connection& connection, const LetterWish& wish) {
  const auto row = adodb::Execute(connection,
                                  u"SELECT Nombre, Contenido, MargenIzquierdo, MargenDerecho, MargenSuperior, "
                                  u"MargenInferior FROM CartasModelo WHERE Eliminado=0 AND IDCartaModelo={}",
                                  wish.letter);
  if (row->AtEnd()) {
    Refuse(u"No hay ninguna carta modelo con el número %1."_s.arg(wish.letter));
  }
  m_name = automation::Text(row->Field(0));
  auto letter = std::make_unique<QTextDocument>();
  letter->setUndoRedoEnabled(false);
  const rtf::Report report = rtf::Read(automation::Text(row->Field(1)), *letter);
  if (report.outcome == rtf::Outcome::Refused) {
    Refuse(u"La carta «%1» no se puede leer. %2"_s.arg(m_name, report.reason));
  }
  if (letter->characterCount() > mostCharacters) {
    Refuse(u"La carta «%1» tiene más de %2 letras, demasiadas para escribirla a cada persona. Acórtela."_s.arg(
        m_name, texts::Grouped(mostCharacters)));
  }
  if (wish.letterhead != 0) {
    PutAbove(*letter, ReadLetterhead(connection, wish.letterhead));
  }
  if (report.outcome == rtf::Outcome::PlainText) {
    m_faults.append(u"La carta es un texto sin formato."_s);
  }
  m_margins = {.left = Margin(row->Field(2), m_margins.left),
               .right = Margin(row->Field(3), m_margins.right),
               .top = Margin(row->Field(4), m_margins.top),
               .bottom = Margin(row->Field(5), m_margins.bottom)};
  if (TextWidth(m_margins).count == 0 || TextHeight(m_margins).count == 0) {
    Refuse(u"Los márgenes de la carta «%1» no dejan sitio para el texto. Corríjalos."_s.arg(m_name));
  }
  NameWhatIsNotOnPaper(*letter, report);
  m_template.emplace(std::move(letter), m_margins);
  m_faults += m_template->Faults();
}

void LetterMailing::NameWhatIsNotOnPaper(const QTextDocument& letter, const rtf::Report& report) {
  m_notes.remarks += documents::LetterStrips(letter, m_margins).Problems();
  for (const QString& drawing : {u"shp"_s, u"shpgrp"_s, u"do"_s, u"object"_s}) {
    if (report.carried.contains(drawing)) {
      m_notes.remarks.append(
          u"La carta tiene dibujos u objetos que no salen en el papel ni en un PDF: use un RTF por persona."_s);
      return;
    }
  }
}

void LetterMailing::ChooseSubject(const LetterWish& wish) {
  QStringList kinds;
  for (const Marker marker : m_template->Markers()) {
    if (SubjectOf(marker) != Subject::Person) {
      kinds.append(u"%1 (%2)"_s.arg(TextOf(marker), SubjectName(SubjectOf(marker))));
    }
  }
  m_subjects = SubjectsOf(m_template->Markers(), m_velumar);
  kinds.removeDuplicates();
  if (m_subjects.isEmpty()) {
    Refuse(
        u"La carta «%1» mezcla campos de distinta clase: %2. Use los de una sola."_s.arg(m_name, kinds.join(u", "_s)));
  }
  if (wish.subject && !m_subjects.contains(*wish.subject)) {
    Refuse(u"La carta «%1» no lleva campos %2."_s.arg(m_name, SubjectName(*wish.subject)));
  }
  const std::optional<documents::Subject> wished = wish.subject ? wish.subject : wish.usually;
  const bool isSaid = wished && m_subjects.contains(*wished);
  if (!isSaid && m_subjects.size() > 1) {
    Refuse(u"Los campos de la carta «%1» valen para donativos y para suscripciones. Diga para cuál es."_s.arg(m_name));
  }
  m_subject = isSaid ? *wished : m_subjects.constFirst();
}

bool LetterMailing::MayBeJoined() const {
  return std::ranges::all_of(m_template->Markers(), documents::IsForAll);
}

void LetterMailing::MakePieces(adodb::Connection& connection, const LetterWish& wish, const SavedSelection& selection) {
  MailingWish people = wish;
  people.onePerAddress = wish.onePerAddress && MayBeJoined();
  if (wish.onePerAddress && !people.onePerAddress) {
    m_notes.remarks.append(u"La carta lleva datos de cada persona: no se juntan las que comparten domicilio."_s);
  }
  m_addressees = AddresseesOf(ReadPeople(connection, selection, wish.order), people, m_notes);
  const QHash<int, QList<MailedRow>> rows =
      ReadRows(connection, {.subject = m_subject,
                            .from = wish.from,
                            .until = wish.until,
                            .year = wish.year,
                            .publications = selection.conditions.Of(Condition::Publication)});
  for (int i = 0; i < static_cast<int>(m_addressees.size()); ++i) {
    const std::size_t before = m_pieces.size();
    AddPieces(i, rows);
    if (GoesAbroad(m_addressees[static_cast<std::size_t>(i)])) {
      m_notes.abroad += static_cast<int>(m_pieces.size() - before);
    }
  }
  const QList<Marker>& markers = m_template->Markers();
  if (m_notes.abroad > 0 && markers.contains(Marker::Town) && !markers.contains(Marker::Country)) {
    m_notes.remarks.append(u"A la dirección de la carta le falta el campo «%1»: al extranjero va sin país."_s.arg(
        TextOf(Marker::Country)));
  }
}

void LetterMailing::AddPieces(int addressee, const QHash<int, QList<MailedRow>>& rows) {
  if (m_subject == Subject::Person) {
    m_pieces.push_back({addressee, {}});
    return;
  }
  const documents::Person& person = m_addressees[static_cast<std::size_t>(addressee)].constFirst();
  const QList<MailedRow> own = rows.value(person.id);
  if (own.isEmpty()) {
    const QString what = m_subject == Subject::Subscription ? u"suscripción"_s : u"donativo"_s;
    m_notes.leftOut.append({person.id, NameInLists(person), u"sin "_s + what});
  }
  for (const MailedRow& row : own) {
    m_pieces.push_back({addressee, row});
  }
}

const Addressee& LetterMailing::PeopleOf(int letter) const {
  return m_addressees[static_cast<std::size_t>(m_pieces[static_cast<std::size_t>(letter)].addressee)];
}

QString LetterMailing::NameOf(int letter) const {
  return NameInLists(PeopleOf(letter).constFirst());
}

int LetterMailing::PartFor(int person) const {
  const auto isFor = [&](const Piece& piece) {
    const Addressee& people = m_addressees[static_cast<std::size_t>(piece.addressee)];
    return std::ranges::any_of(people, [&](const documents::Person& member) { return member.id == person; });
  };
  const auto found = std::ranges::find_if(m_pieces, isFor);
  return found == m_pieces.end() ? -1 : static_cast<int>(found - m_pieces.begin());
}

QList<std::size_t> LetterMailing::Fingerprints() const {
  QList<std::size_t> fingerprints;
  for (const Piece& piece : m_pieces) {
    const documents::Person& first = m_addressees[static_cast<std::size_t>(piece.addressee)].constFirst();
    fingerprints.append(qHashMulti(0, first.id, ValuesFor(piece)));
  }
  return fingerprints;
}

QString LetterMailing::PersonValue(Marker marker, const Addressee& people, bool titled) const {
  const documents::Person& person = people.constFirst();
  const documents::PostalAddress& address = person.address;
  const bool areSeveral = people.size() > 1;
  switch (marker) {
    case Marker::Title:
      return areSeveral ? QString() : person.title;
    case Marker::FirstName:
      return person.firstName;
    case Marker::LastName:
      return documents::Surnames(person);
    case Marker::FullName:
      return areSeveral ? documents::JointName(people).join(u'\n')
             : titled   ? documents::TitledName(person)
                        : documents::FullName(person);
    case Marker::LastNameFirst:
      return documents::LastNameFirst(person);
    case Marker::TaxNumber:
      return person.taxNumber;
    case Marker::Reference:
      return QString::number(person.id);
    case Marker::Street:
      return address.street;
    case Marker::Town:
      return address.town;
    case Marker::Province:
      return documents::PrintedProvince(address);
    case Marker::Postcode:
      return address.postcode;
    case Marker::Country:
      return documents::PrintedCountry(address);
    default:
      return areSeveral ? documents::Salutation(m_jointHeading, documents::Gender::Several)
                        : documents::Salutation(person.heading, documents::GenderOf(person));
  }
}

QString LetterMailing::RowValue(Marker marker, const MailedRow& row) const {
  switch (marker) {
    case Marker::DonationAmount:
    case Marker::SubscriptionAmount:
    case Marker::TaxFormTotal:
      return row.amount;
    case Marker::DonationDate:
    case Marker::SubscriptionDate:
      return row.date;
    case Marker::ReceiptText:
      return row.receiptText;
    case Marker::DonationPeriod:
      return m_donationPeriod;
    case Marker::SubscriptionPeriod:
      return m_subject == Subject::Donation ? m_donationPeriod : row.period;
    case Marker::SubscriptionReceiver:
      return m_receiver;
    case Marker::PersonDeduction:
      return row.personDeduction;
    case Marker::CompanyDeduction:
      return row.companyDeduction;
    default:
      return row.purpose;
  }
}

QString LetterMailing::ValueOf(qsizetype number, const Piece& piece) const {
  const Marker marker = m_template->Markers()[number];
  switch (marker) {
    case Marker::Date:
      return documents::ShortDate(m_moment.date());
    case Marker::LongDate:
      return documents::LongDate(m_moment.date());
    case Marker::DateAndTime:
      return documents::DateAndTime(m_moment);
    default:
      break;
  }
  if (SubjectOf(marker) != Subject::Person) {
    return RowValue(marker, piece.row);
  }
  const bool titled = m_namesTitles && !m_template->FollowsTitle(number);
  return PersonValue(marker, m_addressees[static_cast<std::size_t>(piece.addressee)], titled);
}

QStringList LetterMailing::ValuesFor(const Piece& piece) const {
  QStringList values;
  for (qsizetype number = 0; number < m_template->Markers().size(); ++number) {
    values.append(ValueOf(number, piece));
  }
  return values;
}

std::unique_ptr<QTextDocument> LetterMailing::Filled(int letter, const QColor& ground) const {
  return m_template->Filled(ValuesFor(m_pieces[static_cast<std::size_t>(letter)]), ground);
}

void LetterMailing::Paint(int letter, PaintedPages& pages) const {
  const documents::LetterPainter painter(*Filled(letter), m_margins);
  for (int page = 0; page < painter.PageCount(); ++page) {
    painter.Paint(pages.Next(), page);
  }
}

}  // namespace host
