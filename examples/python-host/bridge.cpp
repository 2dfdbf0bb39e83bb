// What a host in Python needs and PyQt6 cannot say: a services object with the contract's C++ types, arguments that the
// called member writes, and errors that end as numbers and texts. Each call of the component goes on to one slot of a
// Python object, `llamar(member, arguments)`, which answers [True, result, written arguments...] or [False, number,
// text]. The functions at the end are for ctypes.

#include <database/Database.h>
#include <platform/automation/ClassRegistry.h>
#include <platform/automation/Conversion.h>
#include <platform/automation/Error.h>
#include <platform/automation/Invoke.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaObject>
#include <QPointer>

#include <cstring>

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<adodb::Connection> connection;
QPointer<QObject> python;

// The result and the written arguments.
QVariantList Ask(const char* member, const QVariantList& arguments) {
  QVariantList answer;
  if (python == nullptr ||
      !QMetaObject::invokeMethod(python, "llamar", Qt::DirectConnection, Q_RETURN_ARG(QVariantList, answer),
                                 Q_ARG(QString, QString::fromLatin1(member)), Q_ARG(QVariantList, arguments))) {
    throw automation::Error(automation::NoSuchMember);
  }
  if (!answer.value(0).toBool()) {
    throw automation::Error(answer.value(1).toInt(), answer.value(2).toString());
  }
  return answer.mid(1);
}

QVariant Object(QObject* object) {
  return QVariant::fromValue(object);
}

QVariant Objects(const QObjectList& objects) {
  QVariantList list;
  for (QObject* object : objects) {
    list.append(Object(object));
  }
  return list;
}

}  // namespace

class Services : public QObject {
  Q_OBJECT
  Q_PROPERTY(int IDNodo MEMBER m_node)
  Q_PROPERTY(int Accion MEMBER m_action)
  Q_PROPERTY(int IDSeleccionado MEMBER m_selected)
  Q_PROPERTY(QVariant IDAux MEMBER m_aux)
  Q_PROPERTY(adodb::Connection* congestion READ Connection)
  Q_PROPERTY(QString tituloaplicacion READ Title)
  Q_PROPERTY(QString Icono READ Icon)
  Q_PROPERTY(QString strFichAyuda READ Help)
  Q_PROPERTY(QString PathNodo READ Path)
  Q_PROPERTY(int IDUsuario READ User)
  Q_PROPERTY(int TipoUsuario READ UserKind)
  Q_PROPERTY(bool velumar READ Velumar)

 public:
  adodb::Connection* Connection() const { return connection.get(); }
  QString Title() const { return Ask("tituloaplicacion", {}).value(0).toString(); }
  QString Icon() const { return Ask("Icono", {}).value(0).toString(); }
  QString Help() const { return Ask("strFichAyuda", {}).value(0).toString(); }
  QString Path() const { return Ask("PathNodo", {}).value(0).toString(); }
  int User() const { return Ask("IDUsuario", {}).value(0).toInt(); }
  int UserKind() const { return Ask("TipoUsuario", {}).value(0).toInt(); }
  bool Velumar() const { return Ask("velumar", {}).value(0).toBool(); }

  Q_INVOKABLE bool BloqueoRegistro(QObject*&, const QString& formulario, const QString& campoID, int valor,
                                   bool& tiene) {
    const QVariantList answer = Ask("BloqueoRegistro", {formulario, campoID, valor});
    tiene = answer.value(1).toBool();
    return answer.value(0).toBool();
  }
  Q_INVOKABLE void DesbloqueoRegistro(QObject*&, const QString& formulario, const QString& campoID, int valor) {
    Ask("DesbloqueoRegistro", {formulario, campoID, valor});
  }
  Q_INVOKABLE void BloquearControles(QObject* control) { Ask("BloquearControles", {Object(control)}); }
  Q_INVOKABLE void establecercontrolcambioformulario(const QObjectList& controles) {
    Ask("establecercontrolcambioformulario", {Objects(controles)});
  }
  Q_INVOKABLE bool controlcambioformulario(const QObjectList& controles) {
    return Ask("controlcambioformulario", {Objects(controles)}).value(0).toBool();
  }
  Q_INVOKABLE void SeleccionarTexto(QObject* control) { Ask("SeleccionarTexto", {Object(control)}); }
  Q_INVOKABLE void SeleccionarFila(QObject* rejilla, int fila) { Ask("SeleccionarFila", {Object(rejilla), fila}); }
  Q_INVOKABLE void SalvarAnchos(QObject* rejilla, const QString& clave, const QString& formulario) {
    Ask("SalvarAnchos", {Object(rejilla), clave, formulario});
  }
  Q_INVOKABLE void CargarAnchos(QObject* rejilla, const QString& clave, const QString& formulario) {
    Ask("CargarAnchos", {Object(rejilla), clave, formulario});
  }
  Q_INVOKABLE void VerError(const QString& procedimiento, const QString& entidad, const QString& componente) {
    const automation::ErrObject& error = automation::Err();
    Ask("VerError", {error.Number, error.Description, procedimiento, entidad, componente});
  }
  Q_INVOKABLE int CIF_NIF_Valido(const QString& texto, QString& tipo, QString& control) {
    const QVariantList answer = Ask("CIF_NIF_Valido", {texto});
    tipo = answer.value(1).toString();
    control = answer.value(2).toString();
    return answer.value(0).toInt();
  }
  Q_INVOKABLE QVariant Validar_NIF(const QString& texto) { return Ask("CIF_NIF_Valido", {texto}).value(0); }
  Q_INVOKABLE QString FormatearAEuros(const QVariant& importe) {
    return automation::IsNumeric(importe) ? automation::Format(importe, u"#,0.00") : automation::Text(importe);
  }
  Q_INVOKABLE void VerificarEuros(int& tecla, const QVariant& caja, int inicio, int longitud) {
    tecla = Ask("VerificarEuros", {tecla, caja, inicio, longitud}).value(0).toInt();
  }
  Q_INVOKABLE void SeleccionarCP_Provincia(QObject*& cambiado, QObject*& acoplado, adodb::Connection*) {
    Ask("SeleccionarCP_Provincia", {Object(cambiado), Object(acoplado)});
  }

 private:
  int m_node = 0;
  int m_action = 0;
  int m_selected = 0;
  QVariant m_aux = 0;
};

class Lists : public QObject {
  Q_OBJECT

 public:
  Q_INVOKABLE void RellenarCombo(QObject* combo, const QString& origen, const QString& texto, const QString& id,
                                 bool vaciar) {
    Ask("RellenarCombo", {Object(combo), origen, texto, id, vaciar});
  }
  Q_INVOKABLE void RellenarComboPais(adodb::Connection*, QObject* combo, const QVariant& id, bool vaciar) {
    Ask("RellenarComboPais", {Object(combo), id, vaciar});
  }
  Q_INVOKABLE void RellenarComboProvincias(adodb::Connection*, QObject* combo, int pais, const QVariant& id,
                                           bool vaciar) {
    Ask("RellenarComboProvincias", {Object(combo), pais, id, vaciar});
  }
  Q_INVOKABLE void rellenarcombobancos(QObject* combo, adodb::Connection*, const QVariant& id, bool vaciar) {
    Ask("rellenarcombobancos", {Object(combo), id, vaciar});
  }
  Q_INVOKABLE void rellenarcombosucursales(QObject* combo, int banco, adodb::Connection*, const QVariant& id,
                                           bool vaciar) {
    Ask("rellenarcombosucursales", {Object(combo), banco, id, vaciar});
  }
  Q_INVOKABLE void LocalizarElementoLista(QObject* combo, const QVariant& id) {
    Ask("LocalizarElementoLista", {Object(combo), id});
  }
  Q_INVOKABLE QString CargarBancoSucursalCaja(const QString& campoID, int, int id) {
    return Ask("CargarBancoSucursalCaja", {campoID, id}).value(0).toString();
  }
  Q_INVOKABLE void CargarBancoSucursalLista(QObject* combo, const QString& campoID, const QString& texto, int) {
    Ask("CargarBancoSucursalLista", {Object(combo), campoID, texto});
  }
};

namespace {

void Request(Services& request, const char* method, int node, int record) {
  automation::Put(&request, "IDNodo", node);
  automation::Put(&request, "IDSeleccionado", record);
  automation::Call(automation::CreateObject(u"KelConfiguracion.CPrincipal"_s).get(), method, &request);
}

// Runs `work` and gives what it let out as a number, with its text in UTF-8; 0 for nothing. At most `size` bytes.
template <typename Work>
int Guarded(char* text, int size, const Work& work) {
  try {
    work();
    return 0;
  } catch (...) {
    const automation::Error error = automation::CurrentError();
    qstrncpy(text, error.what(), static_cast<std::size_t>(size));
    return error.Number();
  }
}

}  // namespace

extern "C" {

// Prepares the database and registers the classes. `object`: the QObject with the slot `llamar`, which must live on.
Q_DECL_EXPORT int kel_open(const char* connectionString, QObject* object, char* text, int size) {
  return Guarded(text, size, [&] {
    const QString target = QString::fromUtf8(connectionString);
    database::PrepareDatabase(target, database::Content::Reference);
    connection = database::CreateConnection(target);
    connection->Open();
    python = object;
    automation::RegisterClass(u"KelAPI.cPrincipal"_s, [] { return std::make_unique<Services>(); });
    automation::RegisterClass(u"KelApi.cListas"_s, [] { return std::make_unique<Lists>(); });
  });
}

// `aux`: IDAux before, and afterwards what the component left there.
Q_DECL_EXPORT int kel_request(int node, int action, int record, int* aux, char* text, int size) {
  return Guarded(text, size, [&] {
    Services request;
    automation::Put(&request, "Accion", action);
    automation::Put(&request, "IDAux", *aux);
    Request(request, "PasarDatos", node, record);
    *aux = automation::CLng(automation::Get(&request, "IDAux"));
  });
}

Q_DECL_EXPORT int kel_delete(int node, int record, char* text, int size) {
  return Guarded(text, size, [&] {
    Services request;
    Request(request, "EliminarRegistro", node, record);
  });
}

// The rows of a statement as a JSON list of objects, whose keys are the columns' names in lower case.
Q_DECL_EXPORT int kel_query(const char* statement, char* text, int size) {
  return Guarded(text, size, [&] {
    if (connection->State() == adodb::StateClosed) {
      connection->Open();
    }
    QJsonArray list;
    for (const auto rows = connection->Execute(QString::fromUtf8(statement)); !rows->AtEnd(); rows->MoveNext()) {
      QJsonObject row;
      for (int i = 0; i < rows->FieldCount(); ++i) {
        const QVariant value = rows->Field(i);
        row[rows->FieldName(i).toLower()] = automation::IsNull(value) ? QJsonValue() : QJsonValue::fromVariant(value);
      }
      list.append(row);
    }
    const QByteArray json = QJsonDocument(list).toJson(QJsonDocument::Compact);
    if (json.size() >= size) {
      throw automation::Error(automation::Overflow);
    }
    std::memcpy(text, json.constData(), static_cast<std::size_t>(json.size()) + 1);
  });
}

}  // extern "C"

#include "bridge.moc"
