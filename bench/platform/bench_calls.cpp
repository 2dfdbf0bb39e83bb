// What finding a member by name costs beside a call through a member that was found before.

#include "platform/automation/Invoke.h"
#include "support/Race.h"

#include <QMetaMethod>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int calls = 200000;
constexpr int rounds = 9;

class Service : public QObject {
  Q_OBJECT

 public:
  Q_INVOKABLE int Add(int first, int second) { return first + second; }
  Q_INVOKABLE QString BloqueoRegistro(QObject* object, const QString& form, const QString& column, int id, bool& held) {
    held = object != nullptr;
    return form + column + QString::number(id);
  }
};

}  // namespace

int main() {
  Service service;
  const automation::Method sum(&service, "Add");
  std::vector<bench::Contestant> short_calls{
      {"by name",
       [&] {
         for (int i = 0; i < calls; ++i) {
           automation::Call(&service, "add", i, 1);
         }
       }},
      {"resolved method",
       [&] {
         for (int i = 0; i < calls; ++i) {
           std::array<automation::Argument, 2> arguments{i, 1};
           sum.Call(&service, arguments);
         }
       }},
  };
  bench::Race(short_calls, rounds);
  bench::Report("200,000 calls by name, two numbers", short_calls, {2.0});

  const automation::Method lock(&service, "BloqueoRegistro");
  QObject* object = &service;
  bool held = false;
  const QString form = u"frmPais"_s;
  const QString column = u"IDPais"_s;
  std::vector<bench::Contestant> long_calls{
      {"by name",
       [&] {
         for (int i = 0; i < calls; ++i) {
           automation::Call(&service, "BLOQUEOREGISTRO", object, form, column, i, automation::Ref(held));
         }
       }},
      {"resolved method",
       [&] {
         for (int i = 0; i < calls; ++i) {
           std::array<automation::Argument, 5> arguments{object, form, column, i, automation::Ref(held)};
           lock.Call(&service, arguments);
         }
       }},
  };
  bench::Race(long_calls, rounds);
  bench::Report("200,000 calls by name, five arguments, one by reference", long_calls, {2.0});
  return 0;
}

#include "bench_calls.moc"
