// What finding a member by name costs beside a call through a member that was found before, and beside the
// meta-object's own two ways: by name and through a method that was looked up.

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

QMetaMethod Prepared(const char* signature) {
  const QMetaObject& metaObject = Service::staticMetaObject;
  return metaObject.method(metaObject.indexOfMethod(signature));
}

void BenchShortCalls(Service& service) {
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
      {"the meta-object's call by name",
       [&] {
         int result = 0;
         for (int i = 0; i < calls; ++i) {
           QMetaObject::invokeMethod(&service, "Add", Qt::DirectConnection, Q_RETURN_ARG(int, result), Q_ARG(int, i),
                                     Q_ARG(int, 1));
         }
       }},
      {"the meta-object's method, looked up before",
       [&] {
         const QMetaMethod method = Prepared("Add(int,int)");
         int result = 0;
         for (int i = 0; i < calls; ++i) {
           method.invoke(&service, Qt::DirectConnection, Q_RETURN_ARG(int, result), Q_ARG(int, i), Q_ARG(int, 1));
         }
       }},
  };
  bench::Race(short_calls, rounds);
  bench::Report("200,000 calls by name, two numbers", short_calls, {2.0, 1.0, 5.0});
}

void BenchLongCalls(Service& service) {
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
      {"the meta-object's call by name",
       [&] {
         QString result;
         for (int i = 0; i < calls; ++i) {
           QMetaObject::invokeMethod(&service, "BloqueoRegistro", Qt::DirectConnection, Q_RETURN_ARG(QString, result),
                                     Q_ARG(QObject*, object), Q_ARG(QString, form), Q_ARG(QString, column),
                                     Q_ARG(int, i), Q_ARG(bool&, held));
         }
       }},
      {"the meta-object's method, looked up before",
       [&] {
         const QMetaMethod method = Prepared("BloqueoRegistro(QObject*,QString,QString,int,bool&)");
         QString result;
         for (int i = 0; i < calls; ++i) {
           method.invoke(&service, Qt::DirectConnection, Q_RETURN_ARG(QString, result), Q_ARG(QObject*, object),
                         Q_ARG(QString, form), Q_ARG(QString, column), Q_ARG(int, i), Q_ARG(bool&, held));
         }
       }},
  };
  bench::Race(long_calls, rounds);
  bench::Report("200,000 calls by name, five arguments, one by reference", long_calls, {2.0, 1.0, 2.5});
}

}  // namespace

int main() {
  Service service;
  BenchShortCalls(service);
  BenchLongCalls(service);
  return 0;
}

#include "bench_calls.moc"
