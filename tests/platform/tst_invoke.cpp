#include "platform/adodb/Connection.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"
#include "platform/automation/Invoke.h"
#include "support/ErrorOf.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

using namespace automation;
using support::ErrorOf;

namespace {

class Service : public QObject {
  Q_OBJECT
  Q_PROPERTY(int Numero MEMBER m_number)
  Q_PROPERTY(QVariant Libre MEMBER m_free)
  Q_PROPERTY(QString SoloLectura READ ReadOnly CONSTANT)
  Q_PROPERTY(adodb::Connection* Conexion MEMBER m_connection)

 public:
  Q_INVOKABLE QString Unir(const QString& first, int second, bool third = false) {
    return u"%1-%2-%3"_s.arg(first).arg(second).arg(third);
  }
  Q_INVOKABLE void Escribir(bool& flag, QString& text, int& number, QVariant& any) {
    flag = !flag;
    text += u"!"_s;
    ++number;
    any = u"algo"_s;
  }
  Q_INVOKABLE QObject* Mismo(QObject* object) { return object; }
  Q_INVOKABLE int CuentaHijos(const QObjectList& objects) { return static_cast<int>(objects.size()); }
  Q_INVOKABLE void Cambiar(QObject*& object) { object = this; }
  Q_INVOKABLE void Reunir(QObjectList& objects, automation::Currency& amount, adodb::Connection*& connection) {
    objects.append(this);
    amount = Currency::FromScaled(amount.Scaled() + 1);
    connection = nullptr;
  }
  Q_INVOKABLE QString PorClase(Service* service) { return service == nullptr ? u"nada"_s : u"sí"_s; }
  Q_INVOKABLE void Fallar() { throw Error(1234, u"propio"_s); }
  QString ReadOnly() const { return u"fijo"_s; }

 private:
  int m_number = 0;
  QVariant m_free;
  adodb::Connection* m_connection = nullptr;
};

}  // namespace

class tst_invoke : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void NamesWithoutCaseAndConvertedArguments() {
    Service service;
    QCOMPARE(Call(&service, "UNIR", 5, u"1.234,5"_s, -1).toString(), u"5-1234-1"_s);
    QCOMPARE(Call(&service, "unir", u"a"_s, 2.5).toString(), u"a-2-0"_s);
    Put(&service, "numero", u"7"_s);
    QCOMPARE(Get(&service, "NUMERO"), QVariant(7));
    QCOMPARE(Call(&service, "Numero"), QVariant(7));
    Put(&service, "LIBRE", QVariant::fromValue<QObject*>(&service));
    QCOMPARE(Get(&service, "libre").value<QObject*>(), &service);
  }

  void ReferencesAreWrittenBack() {
    Service service;
    bool flag = false;
    QString text = u"hola"_s;
    int number = 41;
    QVariant any;
    Call(&service, "escribir", Ref(flag), Ref(text), Ref(number), Ref(any));
    QCOMPARE(flag, true);
    QCOMPARE(text, u"hola!"_s);
    QCOMPARE(number, 42);
    QCOMPARE(any, QVariant(u"algo"_s));

    // Variables of other types than the callee's are converted both ways; values are left alone.
    QVariant variant = 7;
    qint16 shortNumber = 3;
    Call(&service, "Escribir", Ref(variant), u"valor"_s, Ref(shortNumber), 1);
    QCOMPARE(variant, QVariant(false));
    QCOMPARE(shortNumber, 4);

    QObject* object = nullptr;
    Call(&service, "Cambiar", Ref(object));
    QCOMPARE(object, &service);

    QObjectList objects{this};
    Currency amount = Currency::FromScaled(125000);
    auto* connection = reinterpret_cast<adodb::Connection*>(this);
    Call(&service, "Reunir", Ref(objects), Ref(amount), Ref(connection));
    QCOMPARE(objects, (QObjectList{this, &service}));
    QCOMPARE(amount.Scaled(), 125001);
    QCOMPARE(connection, nullptr);
  }

  void Objects() {
    Service service;
    QObject other;
    QCOMPARE(Call(&service, "Mismo", &other).value<QObject*>(), &other);
    QCOMPARE(Call(&service, "CuentaHijos", QObjectList{&service, &other}).toInt(), 2);
    QCOMPARE(Call(&service, "PorClase", &service).toString(), u"sí"_s);
    QCOMPARE(Call(&service, "PorClase", QVariant()).toString(), u"nada"_s);
    QCOMPARE(ErrorOf([&] { Call(&service, "PorClase", &other); }), 13);
    QCOMPARE(ErrorOf([&] { Call(&service, "Mismo", u"no"_s); }), 13);
    QVERIFY(Get(&service, "Conexion").value<adodb::Connection*>() == nullptr);
  }

  void Errors() {
    Service service;
    QCOMPARE(ErrorOf([&] { Call(&service, "NoExiste"); }), 438);
    QCOMPARE(ErrorOf([&] { Get(&service, "NoExiste"); }), 438);
    QCOMPARE(ErrorOf([&] { Put(&service, "NoExiste", 1); }), 438);
    QCOMPARE(ErrorOf([&] { Put(&service, "SoloLectura", u"x"_s); }), 450);
    QCOMPARE(ErrorOf([&] { Put(&service, "Numero", u"x"_s); }), 13);
    QCOMPARE(ErrorOf([&] { Put(&service, "Numero", 1e10); }), 6);
    QCOMPARE(ErrorOf([&] { Call(&service, "Unir", 1); }), 449);
    QCOMPARE(ErrorOf([&] { Call(&service, "Unir", 1, 2, 3, 4); }), 450);
    QCOMPARE(ErrorOf([&] { Call(&service, "Unir", 1, u"x"_s); }), 13);
    QCOMPARE(ErrorOf([&] { Call(&service, "Unir", Null(), 1); }), 94);
    QCOMPARE(ErrorOf([&] { Call(&service, "Fallar"); }), 1234);
    QCOMPARE(ErrorOf([&] { Call(nullptr, "Unir"); }), 91);
    try {
      Get(&service, "NoExiste");
    } catch (const Error& error) {
      QVERIFY(error.Description().startsWith(u"El objeto no admite esta propiedad o método"_s));
      QVERIFY(error.Description().contains(u"NoExiste"_s));
      QCOMPARE(QString::fromUtf8(error.what()), error.Description());
    }
  }

  void ResolvedMethod() {
    Service service;
    const Method join(&service, "unir");
    std::array<Argument, 2> arguments{u"a"_s, 1};
    QCOMPARE(join.Call(&service, arguments).toString(), u"a-1-0"_s);
    QCOMPARE(ErrorOf([&] { Method(&service, "Numero"); }), 438);
  }
};

KEL_TEST(tst_invoke);
#include "tst_invoke.moc"
