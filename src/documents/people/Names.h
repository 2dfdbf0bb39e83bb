#pragma once

#include "documents/Export.h"
#include "documents/people/Person.h"

#include <QList>
#include <QStringList>

/// Names as letters say them. What a person lacks leaves no blank.
namespace documents {

/// "Pérez Gil"
KELDOCUMENTOS_EXPORT QString Surnames(const Person& person);
/// "Ana Pérez Gil"
KELDOCUMENTOS_EXPORT QString FullName(const Person& person);
/// "D.ª Ana Pérez Gil"
KELDOCUMENTOS_EXPORT QString TitledName(const Person& person);
/// "Pérez Gil, Ana"
KELDOCUMENTOS_EXPORT QString LastNameFirst(const Person& person);

/// Several people on one envelope, in their order, with their titles. Two are one line, with surnames that are the same
/// once: "D. Lorenzo y D.ª Inés Bermúdez Olmedo". Three or four are two lines; of more the first stands for all: "D.
/// Lorenzo Bermúdez Gil y familia". At least one person.
KELDOCUMENTOS_EXPORT QStringList JointName(const QList<Person>& people);
/// The same where a line has little room: two people are two lines.
KELDOCUMENTOS_EXPORT QStringList NarrowJointName(const QList<Person>& people);

}  // namespace documents
