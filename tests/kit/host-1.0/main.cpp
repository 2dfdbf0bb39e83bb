// A host of KelConfiguracion in one file: its services, its lists, a database, and one dialog that adds a country.
// The members of both classes, with their arguments, are those of host-contract.md.

#include <database/Database.h>
#include <platform/adodb/Statement.h>
#include <platform/automation/ClassRegistry.h>
#include <platform/automation/ComponentLibrary.h>
#include <platform/automation/Conversion.h>
#include <platform/automation/Error.h>
#include <platform/automation/Invoke.h>
#include <platform/contract/cConstAccion.h>
#include <platform/contract/cConstNodo.h>

#include <QtWidgets>

using namespace Qt::StringLiterals;

// What all services of this program share.
struct Office {
  Office() {
    const QString target = database::ConnectionStringForFile(u"oficina.db"_s);
    database::PrepareDatabase(target, database::Content::Reference);
    connection = database::CreateConnection(target);
    connection->Open();
  }

  std::unique_ptr<adodb::Connection> connection;
  QHash<QObject*, QVariant> remembered;  // values of a dialog's controls when it was loaded
  QHash<QString, QByteArray> widths;
};

Office& TheOffice() {
  static Office office;
  return office;
}

// `KelAPI.cPrincipal`: carries a request, and serves the dialogs. Every member is looked up by name.
class Services : public QObject {
  Q_OBJECT
  Q_PROPERTY(int IDNodo MEMBER m_node)
  Q_PROPERTY(int Accion MEMBER m_action)
  Q_PROPERTY(int IDSeleccionado MEMBER m_selected)
  Q_PROPERTY(QVariant IDAux MEMBER m_aux)
  Q_PROPERTY(adodb::Connection* congestion READ Connection CONSTANT)
  Q_PROPERTY(QString tituloaplicacion READ Title CONSTANT)
  Q_PROPERTY(QString Icono MEMBER m_icon CONSTANT)
  Q_PROPERTY(QString strFichAyuda MEMBER m_help CONSTANT)
  Q_PROPERTY(QString PathNodo MEMBER m_path)
  Q_PROPERTY(int IDUsuario MEMBER m_user CONSTANT)
  Q_PROPERTY(int TipoUsuario MEMBER m_userKind CONSTANT)
  Q_PROPERTY(bool velumar MEMBER m_velumar CONSTANT)

 public:
  adodb::Connection* Connection() const { return TheOffice().connection.get(); }
  QString Title() const { return u"Oficina"_s; }

  // One user, one program: nobody else can hold a record.
  Q_INVOKABLE bool BloqueoRegistro(QObject*&, const QString&, const QString&, int, bool& tiene) {
    tiene = true;
    return false;
  }
  Q_INVOKABLE void DesbloqueoRegistro(QObject*&, const QString&, const QString&, int) {}
  Q_INVOKABLE void BloquearControles(QObject* control) { control->setProperty("enabled", false); }

  Q_INVOKABLE void establecercontrolcambioformulario(const QObjectList& controles) {
    TheOffice().remembered.clear();
    for (QObject* control : controles) {
      TheOffice().remembered[control] = ValueOf(control);
    }
  }
  Q_INVOKABLE bool controlcambioformulario(const QObjectList& controles) {
    return std::any_of(controles.begin(), controles.end(),
                       [](QObject* control) { return TheOffice().remembered.value(control) != ValueOf(control); });
  }

  Q_INVOKABLE void SeleccionarTexto(QObject* control) {
    if (control->metaObject()->indexOfMethod("selectAll()") >= 0) {
      QMetaObject::invokeMethod(control, "selectAll");
    }
  }
  Q_INVOKABLE void SeleccionarFila(QObject* rejilla, int fila) {
    if (auto* grid = qobject_cast<QTableView*>(rejilla)) {
      grid->selectRow(fila);
    }
  }
  Q_INVOKABLE void SalvarAnchos(QObject* rejilla, const QString& clave, const QString& formulario) {
    if (const auto* grid = qobject_cast<QTableView*>(rejilla)) {
      TheOffice().widths[clave + formulario] = grid->horizontalHeader()->saveState();
    }
  }
  Q_INVOKABLE void CargarAnchos(QObject* rejilla, const QString& clave, const QString& formulario) {
    if (const auto* grid = qobject_cast<QTableView*>(rejilla)) {
      grid->horizontalHeader()->restoreState(TheOffice().widths.value(clave + formulario));
    }
  }

  Q_INVOKABLE void VerError(const QString& procedimiento, const QString& entidad, const QString&) {
    const automation::ErrObject& error = automation::Err();
    QMessageBox::critical(QApplication::activeWindow(), Title(),
                          u"%1 (%2, %3)"_s.arg(error.Description, entidad, procedimiento));
  }

  // Only the kind of identifier that ends in a letter; a real host knows them all.
  Q_INVOKABLE int CIF_NIF_Valido(const QString& texto, QString& tipo, QString& control) {
    tipo = u"NIF"_s;
    control.clear();
    if (!QRegularExpression(u"^\\d{8}[A-Z]$"_s).match(texto).hasMatch()) {
      return 2;
    }
    control = u"TRWAGMYFPDXBNJZSQVHLCKE"_s[texto.left(8).toInt() % 23];
    return texto.endsWith(control) ? 1 : 3;
  }
  Q_INVOKABLE QVariant Validar_NIF(const QString& texto) {
    QString kind;
    QString letter;
    return CIF_NIF_Valido(texto, kind, letter);
  }

  Q_INVOKABLE QString FormatearAEuros(const QVariant& importe) {
    return automation::IsNumeric(importe) ? automation::Format(importe, u"#,0.00") : automation::Text(importe);
  }
  Q_INVOKABLE void VerificarEuros(int& tecla, const QVariant&, int, int) {
    if (tecla >= ' ' && (tecla < '0' || tecla > '9') && tecla != ',') {
      tecla = 0;
    }
  }
  // A host may leave postcode and province to the user.
  Q_INVOKABLE void SeleccionarCP_Provincia(QObject*&, QObject*&, adodb::Connection*) {}

 private:
  // The property that a control is there for: text, current item, checked, value.
  static QVariant ValueOf(const QObject* control) { return control->metaObject()->userProperty().read(control); }

  int m_node = 0;
  int m_action = 0;
  int m_selected = 0;
  QVariant m_aux = 0;
  QString m_icon;
  QString m_help;
  QString m_path;
  int m_user = 1;
  int m_userKind = 1;
  bool m_velumar = false;
};

// `KelApi.cListas`: fills combos. An item's data is the identifier of its record.
class Lists : public QObject {
  Q_OBJECT

 public:
  Q_INVOKABLE void RellenarCombo(QObject* combo, const QString& origen, const QString& columnaTexto,
                                 const QString& columnaId, bool vaciar) {
    const bool isStatement = origen.startsWith(u"select "_s, Qt::CaseInsensitive);
    Fill(combo, isStatement ? origen : u"SELECT * FROM %1 ORDER BY %2"_s.arg(origen, columnaTexto), columnaTexto,
         columnaId, {}, vaciar);
  }
  Q_INVOKABLE void RellenarComboPais(adodb::Connection*, QObject* combo, const QVariant& id, bool vaciar) {
    Fill(combo, u"SELECT * FROM Paises WHERE Eliminado=0 ORDER BY Nombre"_s, u"Nombre"_s, u"IDPais"_s, id, vaciar);
  }
  Q_INVOKABLE void RellenarComboProvincias(adodb::Connection*, QObject* combo, int pais, const QVariant& id,
                                           bool vaciar) {
    Fill(combo, u"SELECT * FROM Provincias WHERE Eliminado=0 AND CodPais=%1 ORDER BY Nombre"_s.arg(pais), u"Nombre"_s,
         u"IDProvincia"_s, id, vaciar);
  }
  Q_INVOKABLE void rellenarcombobancos(QObject* combo, adodb::Connection*, const QVariant& id, bool vaciar) {
    Fill(combo, u"SELECT * FROM Bancos WHERE Eliminado=0 ORDER BY Nombre"_s, u"Nombre"_s, u"IDBanco"_s, id, vaciar);
  }
  Q_INVOKABLE void rellenarcombosucursales(QObject* combo, int banco, adodb::Connection*, const QVariant& id,
                                           bool vaciar) {
    Fill(combo, u"SELECT * FROM Sucursales WHERE Eliminado=0 AND codBanco=%1 ORDER BY Nombre"_s.arg(banco), u"Nombre"_s,
         u"IDSucursal"_s, id, vaciar);
  }
  Q_INVOKABLE void LocalizarElementoLista(QObject* combo, const QVariant& id) {
    auto* list = qobject_cast<QComboBox*>(combo);
    const int index = list != nullptr && id.isValid() ? list->findData(id.toInt()) : -1;
    if (index >= 0) {
      list->setCurrentIndex(index);
    }
  }
  Q_INVOKABLE QString CargarBancoSucursalCaja(const QString& campoID, int, int id) {
    const auto rows = TheOffice().connection->Execute((campoID == u"IDBanco"_s
                                                           ? u"SELECT Numero FROM Bancos WHERE IDBanco=%1"_s
                                                           : u"SELECT Codigo FROM Sucursales WHERE IDSucursal=%1"_s)
                                                          .arg(id));
    return rows->AtEnd() ? QString() : automation::Text(rows->Field(0));
  }
  Q_INVOKABLE void CargarBancoSucursalLista(QObject* combo, const QString& campoID, const QString& texto, int) {
    auto* list = qobject_cast<QComboBox*>(combo);
    int index = texto.isEmpty() ? -1 : list->count() - 1;
    while (index >= 0 && CargarBancoSucursalCaja(campoID, 0, list->itemData(index).toInt()) != texto) {
      --index;
    }
    list->setCurrentIndex(index);
  }

 private:
  void Fill(QObject* combo, const QString& statement, const QString& textColumn, const QString& idColumn,
            const QVariant& id, bool clear) {
    auto* list = qobject_cast<QComboBox*>(combo);
    if (list == nullptr) {
      throw automation::Error(automation::TypeMismatch);
    }
    const auto rows = TheOffice().connection->Execute(statement);
    if (clear) {
      list->clear();
    }
    {
      const QSignalBlocker quiet(list);  // a combo selects its first item by itself; nobody chose that
      const int selected = list->currentIndex();
      for (; !rows->AtEnd(); rows->MoveNext()) {
        list->addItem(automation::Text(rows->Field(textColumn)), rows->Field(idColumn));
      }
      list->setCurrentIndex(selected);
    }
    LocalizarElementoLista(combo, id);
  }
};

// With "--demostrar" the program plays its user: names of controls are part of the contract.
void TypeACountry() {
  if (QWidget* dialog = QApplication::activeModalWidget()) {
    dialog->findChild<QLineEdit*>(u"txtPais"_s)->setText(u"Atlántida"_s);
    dialog->findChild<QAbstractButton*>(u"cmdPais_0"_s)->click();
  }
}

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  try {
    automation::RegisterClass(u"KelAPI.cPrincipal"_s, [] { return std::make_unique<Services>(); });
    automation::RegisterClass(u"KelApi.cListas"_s, [] { return std::make_unique<Lists>(); });
    const auto component = automation::CreateObject(u"KelConfiguracion.CPrincipal"_s);
    qInfo("contract %s", qPrintable(automation::Get(component.get(), "VersionContrato").toString()));

    if (application.arguments().contains(u"--demostrar"_s)) {
      QTimer::singleShot(500, TypeACountry);
    }
    Services request;
    automation::Put(&request, "IDNodo", cConstNodo().Paises());
    automation::Put(&request, "Accion", cConstAccion().Agregar());
    automation::Call(component.get(), "PasarDatos", &request);

    // The component closes the connection at the end of a request.
    TheOffice().connection->Open();
    const auto rows = TheOffice().connection->Execute(u"SELECT Nombre FROM Paises ORDER BY IDPais DESC"_s);
    qInfo("the newest country is %s", qPrintable(automation::Text(rows->Field(u"Nombre"))));
  } catch (const automation::Error& error) {
    qCritical("Error %d: %s", error.Number(), error.what());
    return 1;
  }
  return 0;
}

// Only for `kel-host verificar-servicios libminimal-services.so Oficina.cPrincipal` (or Oficina.cListas), which wants
// the services in a library.
template <typename Class>
struct FactoryOf : automation::ClassFactory {
  std::unique_ptr<QObject> CreateInstance() override { return std::make_unique<Class>(); }
};

extern "C" Q_DECL_EXPORT int DllGetClassObject(const char* progId, automation::ClassFactory** factory) {
  static FactoryOf<Services> services;
  static FactoryOf<Lists> lists;
  const QString name = QString::fromUtf8(progId).toLower();
  *factory = name == u"oficina.cprincipal"_s ? static_cast<automation::ClassFactory*>(&services)
             : name == u"oficina.clistas"_s  ? &lists
                                             : nullptr;
  return *factory != nullptr ? automation::LibraryOk : automation::LibraryClassNotAvailable;
}

extern "C" Q_DECL_EXPORT int DllCanUnloadNow() {
  return automation::LibraryFalse;
}

#include "main.moc"
