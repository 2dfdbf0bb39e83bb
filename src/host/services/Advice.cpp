#include "host/services/Advice.h"

#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/Error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

struct Advice {
  int number;
  QStringView text;
};

constexpr QStringView faultOfTheProgram =
    u"Es un fallo del programa. Vuelva a intentarlo y, si se repite, copie los detalles y envíelos a quien mantiene "
    u"el programa.";
constexpr QStringView unreadableText =
    u"Uno de los textos no se puede guardar como está escrito. Si lleva comillas dobles («\"»), quítelas y vuelva a "
    u"intentarlo.";

constexpr Advice advices[] = {
    {automation::InvalidProcedureCall, faultOfTheProgram},
    {automation::Overflow, u"Un número es demasiado grande para su casilla. Escriba uno menor."},
    {automation::SubscriptOutOfRange, faultOfTheProgram},
    {automation::TypeMismatch, u"Un texto no vale donde va un número o una fecha. Compruebe lo que ha escrito."},
    {automation::ObjectNotSet, faultOfTheProgram},
    {automation::InvalidUseOfNull, faultOfTheProgram},
    {automation::ObjectRequired, faultOfTheProgram},
    {automation::NoSuchMember, faultOfTheProgram},
    {automation::ArgumentNotOptional, faultOfTheProgram},
    {automation::WrongNumberOfArguments, faultOfTheProgram},
    {automation::KeyAlreadyUsed, faultOfTheProgram},
    {adodb::NoCurrentRow,
     u"El registro ya no está en la base de datos: puede que otra persona lo haya eliminado. Pulse F5 para ver los "
     u"que hay."},
    {adodb::NoSuchField, faultOfTheProgram},
    {adodb::ObjectClosed, faultOfTheProgram},
    {adodb::ObjectOpen, faultOfTheProgram},
    {adodb::SyntaxError, unreadableText},
    {adodb::StatementRefused, unreadableText},
};

}  // namespace

QString AdviceFor(int errorNumber) {
  const auto* const found = std::ranges::find(advices, errorNumber, &Advice::number);
  return found != std::end(advices) ? found->text.toString() : QString();
}

}  // namespace host
