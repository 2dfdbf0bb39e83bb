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
  Q_PROPERTY(int Number MEMBER m_number)
  Q_PROPERTY(QVariant Free MEMBER m_free)
  Q_PROPERTY(QString Constant READ ReadOnly CONSTANT)
  Q_PROPERTY(adodb::Connection* Connection MEMBER m_connection)

 public:
  Q_INVOKABLE QString Join(const QString& first, int second, bool third = false) {
    return u"%1-%2-%3"_s.arg(first).arg(second).arg(third);
  }
  Q_INVOKABLE void Write(bool& flag, QString& text, int& number, QVariant& any) {
    flag = !flag;
    text += u"!"_s;
    ++number;
    any = u"algo"_s;
  }
  Q_INVOKABLE QObject* Same(QObject* object) { return object; }
  Q_INVOKABLE int CountObjects(const QObjectList& objects) { return static_cast<int>(objects.size()); }
  Q_INVOKABLE void Replace(QObject*& object) { object = this; }
  Q_INVOKABLE void Gather(QObjectList& objects, automation::Currency& amount, adodb::Connection*& connection) {
    objects.append(this);
    amount = Currency::FromScaled(amount.Scaled() + 1);
    connection = nullptr;
  }
  Q_INVOKABLE QString ByClass(Service* service) { return service == nullptr ? u"nada"_s : u"sí"_s; }
  Q_INVOKABLE void Fail() { throw Error(1234, u"propio"_s); }
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
    QCOMPARE(Call(&service, "JOIN", 5, u"1.234,5"_s, -1).toString(), u"5-1234-1"_s);
    QCOMPARE(Call(&service, "join", u"a"_s, 2.5).toString(), u"a-2-0"_s);
    Put(&service, "number", u"7"_s);
    QCOMPARE(Get(&service, "NUMBER"), QVariant(7));
    QCOMPARE(Call(&service, "Number"), QVariant(7));
    Put(&service, "FREE", QVariant::fromValue<QObject*>(&service));
    QCOMPARE(Get(&service, "free").value<QObject*>(), &service);
  }

  void ReferencesAreWrittenBack() {
    Service service;
    bool flag = false;
    QString text = u"hola"_s;
    int number = 41;
    QVariant any;
    Call(&service, "write", Ref(flag), Ref(text), Ref(number), Ref(any));
    QCOMPARE(flag, true);
    QCOMPARE(text, u"hola!"_s);
    QCOMPARE(number, 42);
    QCOMPARE(any, QVariant(u"algo"_s));

    // Variables of other types than the callee's are converted both ways; values are left alone.
    QVariant variant = 7;
    qint16 shortNumber = 3;
    Call(&service, "Write", Ref(variant), u"valor"_s, Ref(shortNumber), 1);
    QCOMPARE(variant, QVariant(false));
    QCOMPARE(shortNumber, 4);

    QObject* object = nullptr;
    Call(&service, "Replace", Ref(object));
    QCOMPARE(object, &service);

    QObjectList objects{this};
    Currency amount = Currency::FromScaled(125000);
    auto* connection = reinterpret_cast<adodb::Connection*>(this);
    Call(&service, "Gather", Ref(objects), Ref(amount), Ref(connection));
    QCOMPARE(objects, (QObjectList{this, &service}));
    QCOMPARE(amount.Scaled(), 125001);
    QCOMPARE(connection, nullptr);
  }

  void Objects() {
    Service service;
    QObject other;
    QCOMPARE(Call(&service, "Same", &other).value<QObject*>(), &other);
    QCOMPARE(Call(&service, "CountObjects", QObjectList{&service, &other}).toInt(), 2);
    QCOMPARE(Call(&service, "ByClass", &service).toString(), u"sí"_s);
    QCOMPARE(Call(&service, "ByClass", QVariant()).toString(), u"nada"_s);
    QCOMPARE(ErrorOf([&] { Call(&service, "ByClass", &other); }), 13);
    QCOMPARE(ErrorOf([&] { Call(&service, "Same", u"no"_s); }), 13);
    QVERIFY(Get(&service, "Connection").value<adodb::Connection*>() == nullptr);
  }

  void Errors() {
    Service service;
    QCOMPARE(ErrorOf([&] { Call(&service, "Missing"); }), 438);
    QCOMPARE(ErrorOf([&] { Get(&service, "Missing"); }), 438);
    QCOMPARE(ErrorOf([&] { Put(&service, "Missing", 1); }), 438);
    QCOMPARE(ErrorOf([&] { Put(&service, "Constant", u"x"_s); }), 450);
    QCOMPARE(ErrorOf([&] { Put(&service, "Number", u"x"_s); }), 13);
    QCOMPARE(ErrorOf([&] { Put(&service, "Number", 1e10); }), 6);
    QCOMPARE(ErrorOf([&] { Call(&service, "Join", 1); }), 449);
    QCOMPARE(ErrorOf([&] { Call(&service, "Join", 1, 2, 3, 4); }), 450);
    QCOMPARE(ErrorOf([&] { Call(&service, "Join", 1, u"x"_s); }), 13);
    QCOMPARE(ErrorOf([&] { Call(&service, "Join", Null(), 1); }), 94);
    QCOMPARE(ErrorOf([&] { Call(&service, "Fail"); }), 1234);
    QCOMPARE(ErrorOf([&] { Call(nullptr, "Join"); }), 91);
    try {
      Get(&service, "Missing");
    } catch (const Error& error) {
      QVERIFY(error.Description().startsWith(u"El objeto no admite esta propiedad o método"_s));
      QVERIFY(error.Description().contains(u"Missing"_s));
      QCOMPARE(QString::fromUtf8(error.what()), error.Description());
    }
  }

  void ResolvedMethod() {
    Service service;
    const Method join(&service, "join");
    std::array<Argument, 2> arguments{u"a"_s, 1};
    QCOMPARE(join.Call(&service, arguments).toString(), u"a-1-0"_s);
    QCOMPARE(ErrorOf([&] { Method(&service, "Number"); }), 438);
  }
};

KEL_TEST(tst_invoke);
#include "tst_invoke.moc"
