#include "platform/adodb/Connection.h"
#include "platform/automation/ComponentLibrary.h"
#include "platform/automation/Error.h"

#include <QComboBox>
#include <QMessageBox>
#include <QTableWidget>
#include <QThread>

// A library of services with deliberate faults, as authors make them; what is right is here to show that it is not
// blamed.

class Faulty : public QObject {
  Q_OBJECT
  Q_PROPERTY(int IDNodo MEMBER m_node)
  Q_PROPERTY(int Accion MEMBER m_node CONSTANT)
  Q_PROPERTY(short IDSeleccionado MEMBER m_short)
  Q_PROPERTY(int IDAux READ Forgotten WRITE Forget)
  Q_PROPERTY(adodb::Connection* congestion MEMBER m_connection)
  Q_PROPERTY(int tituloaplicacion MEMBER m_node)
  Q_PROPERTY(QString Icono MEMBER m_text)
  Q_PROPERTY(QString PathNodo MEMBER m_text)
  Q_PROPERTY(QString IDUsuario MEMBER m_text)
  Q_PROPERTY(int TipoUsuario MEMBER m_node)
  Q_PROPERTY(QString velumar MEMBER m_text)

 public:
  Q_INVOKABLE bool BloqueoRegistro(QObject*&, const QString&, const QString&, int, bool) { return false; }
  Q_INVOKABLE void DesbloqueoRegistro(QObject*&, const QString&, int) {}
  Q_INVOKABLE void BloquearControles(QObject*) {}
  Q_INVOKABLE void establecercontrolcambioformulario(int) {}
  Q_INVOKABLE bool controlcambioformulario(const QObjectList&) { return false; }
  Q_INVOKABLE void SeleccionarTexto(QObject*) {}
  Q_INVOKABLE void SeleccionarFila(QObject* grid, int row) { qobject_cast<QTableWidget*>(grid)->selectRow(row - 1); }
  Q_INVOKABLE void SalvarAnchos(QObject*, const QString&, const QString&) { throw automation::Error(75, m_text); }
  Q_INVOKABLE void CargarAnchos(QObject*, const QString&, const QString&) {}
  Q_INVOKABLE void VerError(const QString& text, const QString&, const QString&) {
    QMessageBox::question(nullptr, text, text, QMessageBox::Yes | QMessageBox::Ok);
  }
  Q_INVOKABLE int CIF_NIF_Valido(const QString&, QString&, QString&) { return 1; }
  Q_INVOKABLE QString Validar_NIF(const QString&) { return QStringLiteral("1"); }
  Q_INVOKABLE double FormatearAEuros(const QVariant&) { return 1.5; }
  Q_INVOKABLE void VerificarEuros(int&, const QVariant&, int, int) {}

 private:
  int Forgotten() const { return 0; }
  void Forget(int) {}

  int m_node = 0;
  short m_short = 0;
  adodb::Connection* m_connection = nullptr;
  QString m_text = QStringLiteral("no se puede escribir");
};

// The faults that hide the others of the same members.
class FaultyToo : public QObject {
  Q_OBJECT

 public:
  Q_INVOKABLE bool BloqueoRegistro(QObject*&, const QString&, const QString&, int, bool& held) { return held = true; }
  Q_INVOKABLE bool controlcambioformulario(const QObjectList&) { return true; }
  Q_INVOKABLE int CIF_NIF_Valido(const QString&, QString, QString) { return 1; }
  Q_INVOKABLE int Validar_NIF(const QString&) { return 2; }
  Q_INVOKABLE void VerificarEuros(int, const QVariant&, int, int) {}
};

// Faults that only show when a member is called more than once, or with a second object.
class Forgetful : public QObject {
  Q_OBJECT

 public:
  // What is released stays locked for all other objects, which are told that they hold it.
  Q_INVOKABLE bool BloqueoRegistro(QObject*&, const QString&, const QString&, int, bool& held) {
    static const QObject* holder = nullptr;
    holder = holder == nullptr ? this : holder;
    if (holder == this) {
      held = true;
    }
    return holder != this;
  }
  Q_INVOKABLE void DesbloqueoRegistro(QObject*&, const QString&, const QString&, int) {}
  Q_INVOKABLE void VerError(const QString&, const QString&, const QString&) {}
  Q_INVOKABLE QString FormatearAEuros(const QVariant&) { return QStringLiteral("1,234.50"); }
  Q_INVOKABLE void VerificarEuros(int& key, const QVariant&, int, int) { key = key == '7' || key > ',' ? 0 : key; }
};

// What a host keeps in the object, although each call comes to another one; and half of what is asked.
class Personal : public QObject {
  Q_OBJECT

 public:
  Q_INVOKABLE bool BloqueoRegistro(QObject*&, const QString&, const QString&, int, bool& held) {
    held = Holder() == nullptr || Holder() == this;
    Holder() = held ? this : Holder();
    return !held;
  }
  Q_INVOKABLE void DesbloqueoRegistro(QObject*&, const QString&, const QString&, int) {
    Holder() = Holder() == this ? nullptr : Holder();
  }
  Q_INVOKABLE void BloquearControles(QObject* control) {
    if (auto* widget = qobject_cast<QWidget*>(control)) {
      widget->setEnabled(false);
    }
  }
  Q_INVOKABLE void establecercontrolcambioformulario(const QObjectList& controls) {
    m_text = controls.at(0)->property("text").toString();
  }
  Q_INVOKABLE bool controlcambioformulario(const QObjectList& controls) {
    return controls.at(0)->property("text").toString() != m_text;
  }
  Q_INVOKABLE void SalvarAnchos(QObject* grid, const QString&, const QString&) {
    Width() = qobject_cast<QTableWidget*>(grid)->columnWidth(0);
  }
  Q_INVOKABLE void CargarAnchos(QObject* grid, const QString&, const QString&) {
    qobject_cast<QTableWidget*>(grid)->setColumnWidth(0, Width());
  }
  Q_INVOKABLE void VerError(const QString& procedure, const QString&, const QString&) {
    QMessageBox::critical(nullptr, procedure, QStringLiteral("Algo ha fallado"));
  }
  Q_INVOKABLE int Validar_NIF(const QString&) { return 1; }
  Q_INVOKABLE QString FormatearAEuros(const QVariant& amount) {
    return amount.toDouble() > 0 || amount.toString().startsWith(QLatin1Char('1')) ? QStringLiteral("1.234,50")
                                                                                   : QString();
  }

 private:
  static const QObject*& Holder() {
    static const QObject* holder = nullptr;
    return holder;
  }
  static int& Width() {
    static int width = 0;
    return width;
  }

  QString m_text;
};

// And those that stop everything.
class Hanging : public QObject {
  Q_OBJECT
  Q_PROPERTY(int IDNodo READ Never WRITE SetNever)

 public:
  int Never() const {
    for (;;) {
      QThread::sleep(1);
    }
  }
  void SetNever(int) {}
};

class FaultyLists : public QObject {
  Q_OBJECT

 public:
  Q_INVOKABLE void RellenarCombo(QObject*, const QString&, const QString&, const QString&, bool) {}
  Q_INVOKABLE void RellenarComboPais(adodb::Connection*, QObject* combo, const QVariant&, bool) { Fill(combo, {}, -1); }
  Q_INVOKABLE void RellenarComboProvincias(adodb::Connection*, QObject* combo, int, const QVariant&, bool) {
    Fill(combo, 5, -1);
  }
  Q_INVOKABLE void rellenarcombobancos(QObject* combo, adodb::Connection*, const QVariant&, bool) { Fill(combo, 5, 0); }
  Q_INVOKABLE void LocalizarElementoLista(QObject* combo, const QVariant&) {
    qobject_cast<QComboBox*>(combo)->setCurrentIndex(0);
  }
  Q_INVOKABLE int CargarBancoSucursalCaja(const QString&, int, int) { return 0; }
  Q_INVOKABLE void CargarBancoSucursalLista(QObject*, const QString&, const QString&, int) {}

 private:
  static void Fill(QObject* combo, const QVariant& data, int current) {
    auto* list = qobject_cast<QComboBox*>(combo);
    list->clear();
    list->addItem(QStringLiteral("uno"), data);
    list->setCurrentIndex(current);
  }
};

// Lists that look right.
class ForgetfulLists : public QObject {
  Q_OBJECT

 public:
  Q_INVOKABLE void RellenarComboPais(adodb::Connection* connection, QObject* combo, const QVariant&, bool) {
    Fill(combo, *connection, QStringLiteral("SELECT IDPais,Nombre FROM Paises"), false);
  }
  Q_INVOKABLE void RellenarComboProvincias(adodb::Connection* connection, QObject* combo, int country, const QVariant&,
                                           bool) {
    Fill(combo, *connection,
         QStringLiteral("SELECT IDProvincia,Nombre FROM Provincias WHERE Eliminado=0 AND CodPais=%1").arg(country),
         true);
  }
  Q_INVOKABLE void rellenarcombobancos(QObject* combo, adodb::Connection* connection, const QVariant&, bool) {
    Fill(combo, *connection, QStringLiteral("SELECT IDBanco,Nombre FROM Bancos WHERE Eliminado=0"), false);
  }
  Q_INVOKABLE void rellenarcombosucursales(QObject* combo, int, adodb::Connection* connection, const QVariant&, bool) {
    Fill(combo, *connection, QStringLiteral("SELECT IDSucursal,Nombre FROM Sucursales WHERE codBanco=0"), false);
  }
  Q_INVOKABLE QString CargarBancoSucursalCaja(const QString&, int, int) { return {}; }
  Q_INVOKABLE void CargarBancoSucursalLista(QObject* combo, const QString&, const QString&, int) {
    qobject_cast<QComboBox*>(combo)->setCurrentIndex(-1);
  }

 private:
  static void Fill(QObject* combo, adodb::Connection& connection, const QString& statement, bool asText) {
    auto* list = qobject_cast<QComboBox*>(combo);
    list->clear();
    for (const auto rows = connection.Execute(statement); !rows->AtEnd(); rows->MoveNext()) {
      list->addItem(rows->Field(1).toString(), asText ? QVariant(rows->Field(0).toString()) : rows->Field(0));
    }
    list->setCurrentIndex(-1);
  }
};

// Right lists but for what they are asked beside.
class CarelessLists : public QObject {
  Q_OBJECT

 public:
  Q_INVOKABLE void RellenarComboPais(adodb::Connection* connection, QObject* combo, const QVariant& id, bool empties) {
    Fill(combo, *connection, QStringLiteral("SELECT IDPais,Nombre FROM Paises WHERE Eliminado=0 ORDER BY IDPais DESC"),
         id, empties);
  }
  Q_INVOKABLE void RellenarComboProvincias(adodb::Connection* connection, QObject* combo, int country,
                                           const QVariant& id, bool) {
    Fill(combo, *connection,
         QStringLiteral("SELECT IDProvincia,Nombre FROM Provincias WHERE Eliminado=0 AND CodPais=%1 ORDER BY Nombre")
             .arg(country),
         id, true);
  }
  Q_INVOKABLE void rellenarcombobancos(QObject* combo, adodb::Connection* connection, const QVariant& id,
                                       bool empties) {
    const QSignalBlocker quiet(combo);
    Fill(combo, *connection, QStringLiteral("SELECT IDBanco,Nombre FROM Bancos WHERE Eliminado=0 ORDER BY Nombre"), id,
         empties);
  }

 private:
  static void Fill(QObject* combo, adodb::Connection& connection, const QString& statement, const QVariant& id,
                   bool empties) {
    auto* list = qobject_cast<QComboBox*>(combo);
    if (empties) {
      list->clear();
    }
    for (const auto rows = connection.Execute(statement); !rows->AtEnd(); rows->MoveNext()) {
      list->addItem(rows->Field(1).toString(), rows->Field(0));
    }
    list->setCurrentIndex(-1);
    list->setCurrentIndex(id.isValid() ? list->findData(id) : -1);
  }
};

template <typename Class>
struct FactoryOf : automation::ClassFactory {
  std::unique_ptr<QObject> CreateInstance() override { return std::make_unique<Class>(); }
};

extern "C" {

Q_DECL_EXPORT int DllGetClassObject(const char* progId, automation::ClassFactory** factory) {
  static FactoryOf<Faulty> services;
  static FactoryOf<FaultyToo> more;
  static FactoryOf<FaultyLists> lists;
  static FactoryOf<Forgetful> forgetful;
  static FactoryOf<Hanging> hanging;
  static FactoryOf<ForgetfulLists> forgetfulLists;
  static FactoryOf<Personal> personal;
  static FactoryOf<CarelessLists> carelessLists;
  const QHash<QByteArray, automation::ClassFactory*> classes{
      {"Mala.cPrincipal", &services},   {"Peor.cPrincipal", &more},      {"Mala.cListas", &lists},
      {"Fina.cPrincipal", &forgetful},  {"Quieta.cPrincipal", &hanging}, {"Fina.cListas", &forgetfulLists},
      {"Propia.cPrincipal", &personal}, {"Vaga.cListas", &carelessLists}};
  *factory = classes.value(progId);
  return *factory != nullptr ? automation::LibraryOk : automation::LibraryClassNotAvailable;
}

Q_DECL_EXPORT int DllCanUnloadNow() {
  return automation::LibraryFalse;
}

}  // extern "C"

#include "FaultyServices.moc"
