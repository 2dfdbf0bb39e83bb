#include "host/cli/CommandLine.h"

#include "host/records/NodeCatalog.h"
#include "platform/automation/Error.h"
#include "platform/contract/cConstAccion.h"
#include "platform/contract/cConstNodo.h"

#include <algorithm>

namespace host {

using namespace Qt::StringLiterals;

namespace {

// Arguments of the window toolkit, and those of them that are followed by a value.
const QStringList toolkitFlags = {u"reverse"_s, u"widgetcount"_s, u"nograb"_s, u"dograb"_s, u"sync"_s};
const QStringList toolkitOptionsWithValue = {
    u"platform"_s,    u"platformpluginpath"_s, u"platformtheme"_s, u"plugin"_s, u"qwindowgeometry"_s,
    u"qwindowicon"_s, u"qwindowtitle"_s,       u"session"_s,       u"style"_s,  u"stylesheet"_s,
    u"display"_s,     u"geometry"_s,           u"fontengine"_s};

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

class Parser {
 public:
  explicit Parser(const QStringList& arguments) : m_arguments(arguments) {}

  CommandLine Parse() {
    while (m_next < m_arguments.size()) {
      const QString argument = m_arguments[m_next++];
      if (argument.startsWith(u"--"_s)) {
        Option(argument);
      } else if (argument.startsWith(u'-')) {
        SkipToolkitOption(argument);
      } else {
        m_words.append(argument);
      }
    }
    Words();
    Check();
    return m_line;
  }

 private:
  void Option(const QString& argument) {
    const qsizetype equals = argument.indexOf(u'=');
    const QString name = argument.left(equals);
    m_inlineValue.reset();
    if (equals >= 0) {
      m_inlineValue = argument.mid(equals + 1);
    }
    if (!FlagOption(name) && !ValueOption(name)) {
      Refuse(u"No se conoce la opción «%1»."_s.arg(name));
    }
    if (m_inlineValue) {
      Refuse(u"La opción «%1» no lleva ningún valor."_s.arg(name));
    }
  }

  bool FlagOption(const QString& name) {
    if (name == u"--ayuda"_s || name == u"--help"_s) {
      m_line.command = Command::Help;
    } else if (name == u"--version"_s) {
      m_line.command = Command::Version;
    } else if (name == u"--crear"_s) {
      m_line.create = true;
    } else if (name == u"--nueva-ventana"_s) {
      m_line.newWindow = true;
    } else if (name == u"--demo"_s) {
      m_line.demonstration = true;
    } else if (name == u"--oscuro"_s) {
      m_line.dark = true;
    } else {
      return TakeMailingFlag(name, m_line.mailing) || TakeMovingFlag(name, m_line.moving);
    }
    return true;
  }

  bool ValueOption(const QString& name) {
    if (name == u"--archivo"_s) {
      m_line.file = Value(name);
    } else if (name == u"--base"_s) {
      m_line.connectionString = Value(name);
    } else if (name == u"--usuario"_s) {
      m_line.user = Number(name);
    } else if (name == u"--nodo"_s) {
      m_line.node = Number(name);
    } else if (name == u"--accion"_s) {
      m_line.action = Action(Value(name));
    } else if (name == u"--id"_s) {
      m_line.id = Number(name);
    } else if (name == u"--aux"_s) {
      m_line.aux = Number(name);
    } else if (name == u"--limite"_s) {
      m_line.limit = Number(name);
    } else {
      const auto value = [&] { return Value(name); };
      // --hoja is a sheet of labels, or of a workbook.
      const bool isMoving = m_arguments.contains(u"importar"_s) || m_arguments.contains(u"exportar"_s);
      return (isMoving && TakeMovingOption(name, value, m_line.moving)) ||
             TakeMailingOption(name, value, m_line.mailing) || TakeMovingOption(name, value, m_line.moving);
    }
    return true;
  }

  QString Value(const QString& name) {
    QString value;
    if (m_inlineValue) {
      value = *std::exchange(m_inlineValue, std::nullopt);
    } else if (m_next < m_arguments.size()) {
      value = m_arguments[m_next++];
    }
    if (value.isEmpty()) {
      Refuse(u"Falta el valor de la opción «%1»."_s.arg(name));
    }
    return value;
  }

  int Number(const QString& name) {
    const QString value = Value(name);
    bool valid = false;
    const int number = value.toInt(&valid);
    if (!valid || number < 0) {
      Refuse(u"«%1» no sirve como valor de «%2»: tiene que ser un número entero."_s.arg(value, name));
    }
    return number;
  }

  static int Action(const QString& value) {
    const QStringList names = {QString(), u"agregar"_s, u"modificar"_s, QString(), u"nuevo"_s};
    bool valid = false;
    const int number = value.toInt(&valid);
    const int action = valid ? number : static_cast<int>(names.indexOf(value.toLower()));
    if (action != cConstAccion().Agregar() && action != cConstAccion().Modificar() &&
        action != cConstAccion().Nuevo()) {
      Refuse(u"No se conoce la acción «%1»: use agregar (1), modificar (2) o nuevo (4)."_s.arg(value));
    }
    return action;
  }

  void SkipToolkitOption(const QString& argument) {
    const QString name = argument.mid(1);
    if (toolkitOptionsWithValue.contains(name)) {
      ++m_next;
    } else if (!toolkitFlags.contains(name)) {
      Refuse(u"No se conoce la opción «%1»."_s.arg(argument));
    }
  }

  void Words() {
    if (m_words.isEmpty() || m_line.command != Command::Window) {
      return;
    }
    const QString command = m_words.takeFirst();
    if (command == u"abrir"_s) {
      m_line.command = Command::OpenDialog;
    } else if (command == u"registrar"_s || command == u"desregistrar"_s) {
      m_line.command = command == u"registrar"_s ? Command::Register : Command::Unregister;
      m_line.library = m_words.isEmpty() ? QString() : m_words.takeFirst();
    } else if (command == u"verificar-servicios"_s || command == u"verificar-conexion"_s) {
      const bool services = command == u"verificar-servicios"_s;
      m_line.command = services ? Command::VerifyServices : Command::VerifyConnection;
      m_line.library = m_words.isEmpty() ? QString() : m_words.takeFirst();
      // Services and lists are looked at one by one; a connection is that of the services.
      const QString usual = services ? QString() : u"KelAPI.cPrincipal"_s;
      m_line.progId = m_words.isEmpty() ? usual : m_words.takeFirst();
    } else if (command == u"copia"_s || command == u"restaurar"_s) {
      m_line.command = command == u"copia"_s ? Command::Copy : Command::Restore;
      m_line.copy = m_words.isEmpty() ? QString() : m_words.takeFirst();
    } else if (command == u"comprobar"_s) {
      m_line.command = Command::Check;
    } else if (command == u"preparar"_s) {
      m_line.command = Command::SetUp;
    } else if (command == u"bloqueos"_s) {
      m_line.command = Command::Locks;
      LockWords();
    } else if (command == u"usuarios"_s) {
      m_line.command = Command::Users;
      UserWords();
    } else if (command == u"cartas"_s || command == u"etiquetas"_s) {
      m_line.command = command == u"cartas"_s ? Command::Letters : Command::Labels;
    } else if (command == u"importar"_s || command == u"exportar"_s) {
      m_line.command = command == u"importar"_s ? Command::Import : Command::Export;
      m_line.moving.file = m_words.isEmpty() ? QString() : m_words.takeFirst();
    } else {
      Refuse(u"No se conoce la orden «%1»."_s.arg(command));
    }
    if (!m_words.isEmpty()) {
      Refuse(u"Sobra el argumento «%1»."_s.arg(m_words.first()));
    }
  }

  void LockWords() {
    if (m_words.isEmpty()) {
      return;
    }
    if (m_words.constFirst() != u"soltar"_s) {
      Refuse(u"Sobra el argumento «%1»."_s.arg(m_words.constFirst()));
    }
    m_words.removeFirst();
    bool valid = false;
    m_line.release = m_words.isEmpty() ? 0 : m_words.takeFirst().toInt(&valid);
    if (!valid) {
      Refuse(u"Diga qué bloqueo se suelta: kel-host bloqueos soltar NÚMERO"_s);
    }
  }

  void UserWords() {
    const QString act = m_words.isEmpty() ? u"lista"_s : m_words.takeFirst();
    if (act == u"lista"_s) {
      return;
    }
    if (act != u"nueva-clave"_s && act != u"administrador"_s) {
      Refuse(u"No se conoce la orden «usuarios %1»."_s.arg(act));
    }
    m_line.userAct = act == u"nueva-clave"_s ? UserAct::NewPassword : UserAct::Administrator;
    if (m_words.isEmpty()) {
      Refuse(u"Diga de quién: kel-host usuarios %1 NOMBRE"_s.arg(act));
    }
    m_line.userName = m_words.takeFirst();
  }

  void Check() const {
    if (!m_line.file.isEmpty() && !m_line.connectionString.isEmpty()) {
      Refuse(u"Use «--archivo» o «--base», no las dos opciones a la vez."_s);
    }
    if (m_line.command == Command::Register && m_line.library.isEmpty()) {
      Refuse(u"Falta la biblioteca del componente: kel-host registrar BIBLIOTECA"_s);
    }
    if (m_line.command == Command::VerifyServices && m_line.progId.isEmpty()) {
      Refuse(u"Faltan la biblioteca o la clase: kel-host verificar-servicios BIBLIOTECA CLASE"_s);
    }
    if (m_line.command == Command::VerifyConnection && m_line.library.isEmpty()) {
      Refuse(u"Falta la biblioteca de la conexión: kel-host verificar-conexion BIBLIOTECA [CLASE]"_s);
    }
    if (m_line.command == Command::Copy && m_line.copy.isEmpty()) {
      Refuse(u"Falta el archivo de la copia: kel-host copia ARCHIVO"_s);
    }
    if (m_line.command == Command::Restore && m_line.copy.isEmpty()) {
      Refuse(u"Falta la copia que se restaura: kel-host restaurar COPIA"_s);
    }
    if (m_line.command == Command::SetUp && m_line.connectionString.isEmpty()) {
      Refuse(u"Diga qué base de datos se prepara: kel-host preparar --base postgresql://usuario@servidor/base"_s);
    }
    if (m_line.command == Command::Letters) {
      CheckLetterOptions(m_line.mailing);
    } else if (m_line.command == Command::Labels) {
      CheckLabelOptions(m_line.mailing);
    } else if (m_line.mailing.given && m_line.command != Command::Help) {
      Refuse(u"Las opciones de los envíos solo sirven con las órdenes «cartas» y «etiquetas»."_s);
    }
    if (m_line.command == Command::Import) {
      CheckImportOptions(m_line.moving);
    } else if (m_line.command == Command::Export) {
      CheckExportOptions(m_line.moving);
    } else if (m_line.moving.given && m_line.command != Command::Help) {
      Refuse(u"Las opciones del traslado solo sirven con las órdenes «importar» y «exportar»."_s);
    }
    if (m_line.command == Command::OpenDialog) {
      CheckDialog();
    } else if (m_line.node >= 0 || m_line.action != 0 || m_line.id != 0 || m_line.aux != 0) {
      Refuse(u"Las opciones «--nodo», «--accion», «--id» y «--aux» solo sirven con la orden «abrir»."_s);
    }
  }

  void CheckDialog() const {
    if (m_line.node < 0 || m_line.action == 0) {
      Refuse(u"La orden «abrir» necesita las opciones «--nodo» y «--accion»."_s);
    }
    const Node* node = FindNode(m_line.node);
    if (m_line.node != cConstNodo().Sucursales() && (node == nullptr || !node->hasDialog)) {
      Refuse(u"El nodo %1 no tiene ningún cuadro que abrir."_s.arg(m_line.node));
    }
    if (node != nullptr && !node->canAdd && m_line.action != cConstAccion().Modificar()) {
      Refuse(u"En el nodo %1 solo se puede modificar."_s.arg(m_line.node));
    }
    if (m_line.action == cConstAccion().Modificar() && m_line.id == 0) {
      Refuse(u"Para modificar un registro diga cuál con la opción «--id»."_s);
    }
  }

  const QStringList& m_arguments;
  qsizetype m_next = 0;
  std::optional<QString> m_inlineValue;
  QStringList m_words;
  CommandLine m_line;
};

QString UsageHelp() {
  return u"Uso: kel-host [OPCIONES]                    abre la ventana\n"
         "     kel-host abrir --nodo N --accion A      abre un solo cuadro y termina\n"
         "     kel-host registrar BIBLIOTECA           apunta el componente en el registro de clases del usuario\n"
         "     kel-host desregistrar [BIBLIOTECA]      lo borra de allí\n"
         "     kel-host verificar-servicios B CLASE    comprueba los servicios de otro programa, en su biblioteca B\n"
         "     kel-host verificar-conexion B [CLASE]   pasa las sentencias del componente por la conexión de otro "
         "programa\n"
         "     kel-host copia ARCHIVO                  copia la base de datos, aunque esté en uso, y comprueba la "
         "copia\n"
         "     kel-host restaurar COPIA                pone una copia en lugar de la base de datos, que se conserva\n"
         "     kel-host comprobar                      busca daños: integridad, índices, referencias, longitudes\n"
         "     kel-host preparar --base CADENA         prepara una base de datos de un servidor: tablas, grupos, "
         "permisos\n"
         "     kel-host bloqueos                       dice quién está modificando qué registro\n"
         "     kel-host bloqueos soltar NÚMERO         suelta el registro de ese número\n"
         "     kel-host usuarios                       dice quién puede entrar en la base de datos, y con qué "
         "derechos\n"
         "     kel-host usuarios nueva-clave NOMBRE    le da otra contraseña (solo el dueño del archivo)\n"
         "     kel-host usuarios administrador NOMBRE  lo hace administrador (solo el dueño del archivo)\n"
         "     kel-host cartas --carta I --seleccion NOMBRE SALIDA     escribe una carta para cada persona\n"
         "     kel-host etiquetas --hoja I --seleccion NOMBRE SALIDA   escribe etiquetas de envío\n"
         "     kel-host etiquetas --hoja I --cabecera I SALIDA         etiquetas de remite (--cuantas N)\n"
         "     kel-host etiquetas --hoja I SALIDA                      con una hoja de discos bancarios: los discos\n\n"_s;
}

}  // namespace

CommandLine ParseCommandLine(const QStringList& arguments) {
  return Parser(arguments).Parse();
}

static QString MovingHelp() {
  return QStringLiteral(
      "  --prueba       con «importar»: dice qué entraría, sin escribir nada\n"
      "  --aunque-falten            con «importar»: deja fuera lo que no pueda entrar y trae el resto\n"
      "  --tabla ALLÍ=AQUÍ, --columna TABLA.ALLÍ=AQUÍ  con «importar»: nombres que no coinciden solos\n"
      "  --tabla T      con «importar»: la tabla de una hoja o lista; con «exportar»: la única que se escribe\n"
      "  --hoja H       con «importar»: la única hoja o tabla que se lee, por su nombre o su número\n"
      "  --titulos F, --titulos HOJA=F    con «importar»: la fila que tiene los títulos, sin contar las vacías\n"
      "  --correspondencia ARCHIVO  con «importar»: lo que se dijo en la ventana de tablas con esos títulos\n"
      "  --codificacion C, --separador S  con «importar»: utf-8, utf-16 o windows-1252; «;», «,», «|» o tab\n"
      "  --respuestas F con «importar»: respuestas a las preguntas, como las da el informe entre corchetes\n"
      "  --sin-eliminados  con «importar»: deja fuera lo eliminado que nadie usa\n"
      "  --informe F    con «importar»: el informe, también en un archivo\n");
}

QString CommandLineHelp() {
  QString text = UsageHelp();
  text +=
      u"  --archivo F    archivo de la base de datos\n"
      "  --base CADENA  cadena de conexión, por ejemplo Motor=sqlite;Archivo=/datos/kel.db\n"
      "                 o postgresql://usuario@servidor/base\n"
      "  --crear        con «--archivo» o «--base»: crea el archivo si no existe\n"
      "  --demo         base de datos de ejemplo, aparte de la propia\n"
      "  --usuario N    número del usuario que trabaja\n"
      "  --oscuro       colores oscuros\n"
      "  --nueva-ventana            otra ventana, aunque ya haya una con la misma base de datos\n"
      "  --nodo N       con «abrir»: clase de registro, por su número:\n"_s;
  for (const Node& node : NodeCatalog()) {
    if (node.hasDialog) {
      text += u"                   %1  %2\n"_s.arg(node.id, 2).arg(node.title);
    }
  }
  text +=
      u"                    0  Sucursales (--aux: número del banco)\n"
      "  --accion A     con «abrir»: agregar (1), modificar (2) o nuevo (4)\n"
      "  --id I         con «abrir»: registro que se modifica\n"
      "  --aux N        con «abrir»: registro del que depende el nuevo\n"
      "  --limite S     con «verificar-…»: segundos que puede tardar una llamada, 20 si no se dice\n"
      "  SALIDA         --pdf F, --impresora P o, las cartas, --pdf-por-persona CARPETA o --rtf-por-persona CARPETA\n"
      "  --doble-cara, --paginas A-B, --copias N, --bandeja T       con «--impresora»; cada carta empieza una hoja\n"
      "  --cabecera I               con «cartas»: una cabecera sobre el texto\n"
      "  --orden O      de los envíos: apellidos, codigo (el postal) o numero\n"
      "  --una-por-domicilio        junta a quienes comparten dirección\n"
      "  --sin-direccion            incluye a quienes no la tienen\n"
      "  --aceptar                  escribe aunque haya campos desconocidos o textos que no caben\n"
      "  --fecha F                  con «cartas»: su fecha, como 2026-01-31; si no, la de hoy\n"
      "  --donativos-desde F, --donativos-hasta F  donativos de esas fechas; si no, el último de cada persona\n"
      "  --ejercicio AÑO            año del modelo 182; si no, el anterior\n"
      "  --para P                   donativos o suscripciones, si la carta vale para los dos\n"
      "  --periodicidad T, --receptor T            lo que ninguna tabla sabe, igual en todas las cartas\n"
      "  --desde N, --saltar N,N    con «etiquetas»: dónde empieza la primera hoja y qué etiquetas no se usan\n"
      "  --desde-la-ultima          con «etiquetas»: empieza detrás de la última que salió bien\n"
      "  --recordar                 con «etiquetas»: apunta dónde acaba la última hoja\n"
      "  --discos N,N, --emisor N,N con una hoja de discos: cuáles, y de qué emisor si el presentador tiene varios\n"_s +
      MovingHelp() +
      u"  --ayuda        esta ayuda\n"
      "  --version      versión del programa\n\n"
      "Termina con 0, con 1 si no se puede seguir, con 2 si los argumentos no valen y con 3 si algo quedaría sin "
      "traer, y por eso no se ha traído nada.\n"_s;
  return text;
}

}  // namespace host
