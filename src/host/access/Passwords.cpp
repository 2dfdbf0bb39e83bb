#include "host/access/Passwords.h"

#include "platform/automation/Error.h"
#include "platform/text/FoldForSearch.h"

#include <QRegularExpression>

#include <sodium.h>

#include <algorithm>
#include <array>
#include <cerrno>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr unsigned long long passes = 3;
constexpr std::size_t memory = std::size_t{64} * 1024 * 1024;

// Of what is kept nothing beyond these is computed: a file that was tampered with must not take the machine's memory.
constexpr qint64 mostMemory = 256 * 1024;  // in KiB
constexpr qint64 mostPasses = 10;

[[noreturn]] void RaiseOutOfMemory() {
  constexpr int outOfMemory = 7;
  throw automation::Error(outOfMemory, u"No queda memoria para comprobar la contraseña. Cierre otros programas."_s);
}

void Prepare() {
  static const bool isReady = sodium_init() >= 0;
  if (!isReady) {
    throw automation::Error(automation::InvalidProcedureCall, u"Las contraseñas no se pueden cifrar en este equipo."_s);
  }
}

QString Opaque(QString password) {
  for (QChar& c : password) {
    if (c.category() == QChar::Separator_Space) {
      c = u' ';
    }
  }
  return password.normalized(QString::NormalizationForm_C);
}

qsizetype Characters(const QString& text) {
  return text.toUcs4().size();
}

// What is cut is longer than any password that somebody has, and its check takes as long as any other.
QByteArray Bytes(const QString& password) {
  return Opaque(password).left(longestPassword * 4).toUtf8();
}

bool AreNeighbours(QChar one, QChar other) {
  static const std::array rows{u"1234567890"_s, u"qwertyuiop"_s, u"asdfghjklñ"_s, u"zxcvbnm"_s,
                               u"abcdefghijklmnopqrstuvwxyz"_s};
  return one == other || std::ranges::any_of(rows, [&](const QString& row) {
           return row.contains(QString(one) + other) || row.contains(QString(other) + one);
         });
}

// "qwerty12", "aaaabbbb": hardly a step that is not to the next key or to the same.
bool IsAlongTheKeyboard(const QString& password) {
  constexpr int oneInFour = 4;
  const QString keys = password.toLower();
  qsizetype jumps = 0;
  for (qsizetype i = 1; i < keys.size(); ++i) {
    jumps += AreNeighbours(keys[i - 1], keys[i]) ? 0 : 1;
  }
  return jumps * oneInFour <= keys.size() - 1;
}

// Letters only, without regard to case and accents.
QString Core(const QString& text) {
  static const QRegularExpression others(u"[^\\p{L}]+"_s);
  return texts::FoldForSearch(text).remove(others);
}

bool HasParametersInReach(const QString& hash) {
  static const QRegularExpression form(
      u"^\\$argon2id\\$v=19\\$m=(\\d{1,9}),t=(\\d{1,3}),p=1\\$[A-Za-z0-9+/]{22}\\$[A-Za-z0-9+/]{43}\\z"_s);
  const QRegularExpressionMatch match = form.match(hash);
  return match.hasMatch() && match.captured(1).toLongLong() <= mostMemory &&
         match.captured(2).toLongLong() <= mostPasses;
}

}  // namespace

QString PasswordFault(const QString& password, const QStringList& names) {
  const QString opaque = Opaque(password);
  const qsizetype length = Characters(opaque);
  if (length < shortestPassword) {
    return u"Escriba una contraseña de al menos %1 caracteres."_s.arg(shortestPassword);
  }
  if (length > longestPassword) {
    return u"Escriba una contraseña más corta, de hasta %1 caracteres."_s.arg(longestPassword);
  }
  if (std::ranges::any_of(opaque, [](QChar c) { return c.category() == QChar::Other_Control; })) {
    return u"La contraseña tiene caracteres que no se pueden escribir. Escríbala con el teclado."_s;
  }
  if (IsAlongTheKeyboard(opaque)) {
    return u"No use una tecla repetida ni teclas seguidas del teclado."_s;
  }
  const QString core = Core(opaque);
  for (const QString& name : names) {
    if (!core.isEmpty() && core == Core(name)) {
      return u"No use su nombre ni el de la entidad."_s;
    }
  }
  return {};
}

QString HashOf(const QString& password) {
  Prepare();
  const QByteArray bytes = Bytes(password);
  std::array<char, crypto_pwhash_STRBYTES> hash{};
  if (crypto_pwhash_str_alg(hash.data(), bytes.constData(), static_cast<unsigned long long>(bytes.size()), passes,
                            memory, crypto_pwhash_ALG_ARGON2ID13) != 0) {
    RaiseOutOfMemory();
  }
  return QString::fromLatin1(hash.data());
}

PasswordVerdict CheckPassword(const QString& password, const QString& hash) {
  Prepare();
  if (!HasParametersInReach(hash)) {
    return PasswordVerdict::Unusable;
  }
  const QByteArray bytes = Bytes(password);
  errno = 0;
  const bool isRight = crypto_pwhash_str_verify(hash.toLatin1().constData(), bytes.constData(),
                                                static_cast<unsigned long long>(bytes.size())) == 0;
  if (!isRight && errno == ENOMEM) {
    RaiseOutOfMemory();
  }
  return isRight ? PasswordVerdict::Right : PasswordVerdict::Wrong;
}

void PretendToCheck(const QString& password) {
  HashOf(password);
}

bool IsOutdated(const QString& hash) {
  return crypto_pwhash_str_needs_rehash(hash.toLatin1().constData(), passes, memory) != 0;
}

}  // namespace host
