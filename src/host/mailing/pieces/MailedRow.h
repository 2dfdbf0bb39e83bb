#pragma once

#include "documents/markers/Subject.h"
#include "host/mailing/selection/Conditions.h"
#include "platform/adodb/Connection.h"

#include <QDate>
#include <QHash>
#include <QString>

namespace host {

/// What a letter is about beside its people: a donation, a subscription, or the donations of a type in a year. Texts as
/// letters show them.
struct MailedRow {
  QString purpose;  ///< The type of a donation, the publication of a subscription.
  QString amount;
  QString date;
  QString receiptText;
  QString period;
  QString personDeduction;
  QString companyDeduction;
};

/// Which rows a letter is written for.
struct RowWish {
  documents::Subject subject = documents::Subject::Person;
  QDate from;  ///< Donations: all between the dates; without both each person's last.
  QDate until;
  int year = 0;             ///< Of the annual return.
  QList<int> publications;  ///< Of subscriptions; all where empty.
};

/// The rows of each person, by the person's key, in the order of their dates.
QHash<int, QList<MailedRow>> ReadRows(adodb::Connection& connection, const RowWish& wish);

}  // namespace host
