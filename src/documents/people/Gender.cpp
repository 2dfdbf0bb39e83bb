#include "documents/people/Gender.h"

#include "platform/text/FoldForSearch.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace documents {

namespace {

struct Word {
  QStringView folded;  ///< Without points, as searches compare it.
  Gender gender;
};

constexpr Word titles[] = {
    {u"d", Gender::Man},          {u"don", Gender::Man},        {u"sr", Gender::Man},        {u"senor", Gender::Man},
    {u"dr", Gender::Man},         {u"p", Gender::Man},          {u"padre", Gender::Man},     {u"fray", Gender::Man},
    {u"fr", Gender::Man},         {u"hno", Gender::Man},        {u"hermano", Gender::Man},   {u"rvdo", Gender::Man},
    {u"rdo", Gender::Man},        {u"rvdmo", Gender::Man},      {u"mons", Gender::Man},      {u"monsenor", Gender::Man},
    {u"excmo", Gender::Man},      {u"ilmo", Gender::Man},       {u"da", Gender::Woman},      {u"dna", Gender::Woman},
    {u"dona", Gender::Woman},     {u"sra", Gender::Woman},      {u"senora", Gender::Woman},  {u"srta", Gender::Woman},
    {u"senorita", Gender::Woman}, {u"dra", Gender::Woman},      {u"sor", Gender::Woman},     {u"m", Gender::Woman},
    {u"madre", Gender::Woman},    {u"hna", Gender::Woman},      {u"hermana", Gender::Woman}, {u"rvda", Gender::Woman},
    {u"rda", Gender::Woman},      {u"excma", Gender::Woman},    {u"ilma", Gender::Woman},    {u"sres", Gender::Several},
    {u"srs", Gender::Several},    {u"hnos", Gender::Several},   {u"hnas", Gender::Several},  {u"sras", Gender::Several},
    {u"fam", Gender::Several},    {u"familia", Gender::Several}};

constexpr Word headingKinds[] = {{u"religiosa", Gender::Woman},
                                 {u"religioso", Gender::Man},
                                 {u"sacerdote", Gender::Man},
                                 {u"obispo", Gender::Man},
                                 {u"matrimonio", Gender::Several}};

template <std::size_t Count>
Gender Find(const Word (&words)[Count], const QString& folded) {
  for (const Word& word : words) {
    if (folded == word.folded) {
      return word.gender;
    }
  }
  return Gender::Unknown;
}

/// "D. y D.ª" are several, "Dr. D." is one man.
Gender Together(Gender one, Gender other) {
  if (one == Gender::Unknown || one == other) {
    return other;
  }
  return other == Gender::Unknown ? one : Gender::Several;
}

Gender GenderOfTitle(const QString& title) {
  if (title.contains(u'/')) {
    return Gender::Unknown;
  }
  Gender gender = Gender::Unknown;
  for (QString word : texts::FoldForSearch(title).simplified().split(u' ')) {
    gender = Together(gender, Find(titles, word.remove(u'.')));
  }
  return gender;
}

}  // namespace

Gender GenderOf(const Person& person) {
  const Gender gender = GenderOfTitle(person.title);
  return gender != Gender::Unknown ? gender : Find(headingKinds, texts::FoldForSearch(person.headingKind).simplified());
}

}  // namespace documents
