"""A host of KelConfiguracion in PyQt6, over the bridge beside it: host.py LIBRARY [--demostrar]."""

import ctypes
import json
import sys

from PyQt6 import sip
from PyQt6.QtCore import QItemSelectionModel, QObject, Qt, QTimer, pyqtSlot
from PyQt6.QtWidgets import QAbstractButton, QApplication, QLineEdit, QMessageBox

COUNTRIES, ADD, MODIFY, NEW = 20, 1, 2, 4


class KelError(Exception):
    """An error of the component or the database: number, text."""


class Kel:
    """The functions of the bridge."""

    def __init__(self, library, connection_string, services):
        self.library = ctypes.CDLL(library)
        self.call("kel_open", connection_string.encode(), ctypes.c_void_p(sip.unwrapinstance(services)))

    def call(self, function, *arguments):
        text = ctypes.create_string_buffer(1 << 20)
        number = getattr(self.library, function)(*arguments, text, len(text))
        if number != 0:
            raise KelError(number, text.value.decode())
        return text.value.decode()

    def request(self, node, action, record=0, aux=0):
        """Answers what the component left in IDAux."""
        left = ctypes.c_int(aux)
        self.call("kel_request", node, action, record, ctypes.byref(left))
        return left.value

    def delete(self, node, record):
        self.call("kel_delete", node, record)

    def query(self, statement):
        return json.loads(self.call("kel_query", statement.encode()))


class Services(QObject):
    """Both classes of the contract. A method answers its result, or a tuple: the result, then what it writes."""

    tituloaplicacion, Icono, strFichAyuda, PathNodo = "Oficina", "", "", ""
    IDUsuario, TipoUsuario, velumar = 1, 1, False

    def __init__(self):
        super().__init__()
        self.remembered = {}
        self.widths = {}

    @pyqtSlot(str, "QVariantList", result="QVariantList")
    def llamar(self, member, arguments):
        # An exception that leaves a slot would end the program.
        try:
            found = getattr(self, member)
            answer = found(*arguments) if callable(found) else found
            return [True, *(answer if isinstance(answer, tuple) else (answer,))]
        except KelError as error:
            return [False, *error.args]
        except Exception as error:  # pylint: disable=broad-except
            return [False, 440, f"{member}: {error!r}"]

    # One user, one program: nobody else can hold a record.
    def BloqueoRegistro(self, _form, _key_column, _key):
        return False, True

    def DesbloqueoRegistro(self, _form, _key_column, _key):
        pass

    def BloquearControles(self, control):
        control.setEnabled(False)

    @staticmethod
    def value_of(control):
        return control.metaObject().userProperty().read(control)

    def establecercontrolcambioformulario(self, controls):
        self.remembered = {sip.unwrapinstance(control): self.value_of(control) for control in controls}

    def controlcambioformulario(self, controls):
        return any(self.remembered.get(sip.unwrapinstance(control)) != self.value_of(control) for control in controls)

    def SeleccionarTexto(self, control):
        if hasattr(control, "selectAll"):
            control.selectAll()

    def SeleccionarFila(self, grid, row):
        flags = QItemSelectionModel.SelectionFlag
        grid.selectionModel().setCurrentIndex(grid.model().index(row, 0), flags.ClearAndSelect | flags.Rows)

    def SalvarAnchos(self, grid, key, form):
        self.widths[key, form] = grid.horizontalHeader().saveState()

    def CargarAnchos(self, grid, key, form):
        if (key, form) in self.widths:
            grid.horizontalHeader().restoreState(self.widths[key, form])

    def VerError(self, number, text, procedure, entity, _component):
        QMessageBox.critical(None, self.tituloaplicacion, f"Error {number}: {text} ({entity}, {procedure})")

    # Only the kind of identifier that ends in a letter.
    def CIF_NIF_Valido(self, text):
        if len(text) != 9 or not text[:8].isdigit() or not text[8].isalpha():
            return 2, "NIF", ""
        letter = "TRWAGMYFPDXBNJZSQVHLCKE"[int(text[:8]) % 23]
        return (1 if text[8] == letter else 3), "NIF", letter

    def VerificarEuros(self, key, _box, _start, _length):
        return key if key < 32 or chr(key) in "0123456789," else 0

    def SeleccionarCP_Provincia(self, _changed, _coupled):
        pass

    def fill(self, combo, statement, text, key, selected, clear):
        rows = kel.query(statement)
        if clear:
            combo.clear()
        current = combo.currentIndex()
        combo.blockSignals(True)  # a combo selects its first item by itself; nobody chose that
        for row in rows:
            combo.addItem(row[text.lower()], row[key.lower()])
        combo.setCurrentIndex(current)
        combo.blockSignals(False)
        self.LocalizarElementoLista(combo, selected)

    def RellenarCombo(self, combo, origin, text, key, clear):
        is_statement = origin.lower().startswith("select ")
        statement = origin if is_statement else f"SELECT {key},{text} FROM {origin} ORDER BY {text}"
        self.fill(combo, statement, text, key, None, clear)

    def live(self, combo, table, key, condition, selected, clear):
        statement = f"SELECT {key},Nombre FROM {table} WHERE Eliminado=0 {condition} ORDER BY Nombre"
        self.fill(combo, statement, "Nombre", key, selected, clear)

    def RellenarComboPais(self, combo, selected, clear):
        self.live(combo, "Paises", "IDPais", "", selected, clear)

    def RellenarComboProvincias(self, combo, country, selected, clear):
        self.live(combo, "Provincias", "IDProvincia", f"AND CodPais={country}", selected, clear)

    def rellenarcombobancos(self, combo, selected, clear):
        self.live(combo, "Bancos", "IDBanco", "", selected, clear)

    def rellenarcombosucursales(self, combo, bank, selected, clear):
        self.live(combo, "Sucursales", "IDSucursal", f"AND codBanco={bank}", selected, clear)

    def LocalizarElementoLista(self, combo, key):
        index = combo.findData(key, Qt.ItemDataRole.UserRole) if key is not None else -1
        if index >= 0:
            combo.setCurrentIndex(index)

    def CargarBancoSucursalCaja(self, key_column, key):
        table, code = ("Bancos", "Numero") if key_column == "IDBanco" else ("Sucursales", "Codigo")
        rows = kel.query(f"SELECT {code} FROM {table} WHERE {key_column}={key}")
        return rows[0][code.lower()] if rows else ""

    def CargarBancoSucursalLista(self, combo, key_column, text):
        codes = [self.CargarBancoSucursalCaja(key_column, combo.itemData(i)) for i in range(combo.count())]
        combo.setCurrentIndex(codes.index(text) if text and text in codes else -1)


def accept_country(name):
    """Plays the user: names of controls are part of the contract."""
    dialog = QApplication.activeModalWidget()
    dialog.findChild(QLineEdit, "txtPais").setText(name)
    dialog.findChild(QAbstractButton, "cmdPais_0").click()


def play():
    """Adds a country, which hands its key back, changes it, and deletes another one."""
    QTimer.singleShot(500, lambda: accept_country("Lemuria"))
    lemuria = kel.request(COUNTRIES, NEW)
    kel.delete(COUNTRIES, lemuria)
    QTimer.singleShot(500, lambda: accept_country("Atlantis"))
    atlantis = kel.request(COUNTRIES, NEW)
    QTimer.singleShot(500, lambda: accept_country("Atlántida"))
    kel.request(COUNTRIES, MODIFY, atlantis)


if len(sys.argv) < 2:
    sys.exit("Uso: host.py BIBLIOTECA [--demostrar]\nBIBLIOTECA: libkel-python.so, el puente que hace bridge.cpp")
application = QApplication(sys.argv)
services = Services()
try:
    kel = Kel(sys.argv[1], "Motor=sqlite;Archivo=oficina.db", services)
    if "--demostrar" in sys.argv:
        play()
    else:
        kel.request(COUNTRIES, ADD)
    newest = kel.query("SELECT Nombre FROM Paises WHERE Eliminado=0 ORDER BY IDPais DESC")
    print("the newest country is", newest[0]["nombre"])
except KelError as error:
    sys.exit("Error {}: {}".format(*error.args))
