"""What people do with the installed program from beginning to end. Usage: journeys.py PREFIX PICTURES [JOURNEY...]

A journey ends at once where something is not there that a person would look for; a picture of the screen is kept then.
"""
import os
import pathlib
import signal
import subprocess
import sys
import time
import traceback

import pyatspi

from desktop import Program, below, click, keys, shows, type_text, until

PLACE = pathlib.Path(os.environ["KEL_E2E_PLACE"])
PASSWORD = "tres tigres tristes"
ROW = pyatspi.ROLE_TABLE_CELL


class Office:
    """A program's main window."""

    def __init__(self, program):
        self.program = program
        self.window = program.window("– Kel")

    def choose(self, node):
        """Its records, by a click in the tree."""
        tree = self.window.find("Clases de registro", pyatspi.ROLE_TREE)
        self.window.front()
        click(until(lambda: next((cell for cell in below(tree) if cell.name == node), None), f"«{node}» in the tree"))
        self.window = self.program.window(node)

    def rows(self):
        table = self.window.find("Registros", pyatspi.ROLE_TABLE)
        return [cell.name for cell in below(table) if cell.getRole() == ROW and shows(cell)]

    def select(self, text):
        table = self.window.front().find("Registros", pyatspi.ROLE_TABLE)
        # A cell may go while it is looked at, when the list is read anew.
        def row():
            return next((cell for cell in below(table)
                         if cell.getRole() == ROW and cell.name == text and shows(cell)), None)
        click(until(row, f"a row «{text}»"))

    def press(self, name):
        self.window.press(name)

    def strip(self, words, seconds=20):
        """The strip above the list that says so."""
        return until(lambda: next((text for text in self.window.texts() if words in text), None),
                     f"a strip «{words}»", seconds)

    def menu(self, menu, item):
        """By the letters that are underlined."""
        self.window.front()
        keys(f"alt+{menu}")
        keys(item)

    def add_bank(self, number, name):
        self.press("Agregar")
        dialog = self.program.window("Agregar banco")
        dialog.fill("Número", number)
        dialog.fill("Nombre", name)
        dialog.press("Aceptar")
        dialog.gone()


def new_file(name):
    folder = PLACE / name
    folder.mkdir()
    return ["--archivo", folder / "oficina.db", "--crear"]


def server_database(name):
    folder = (PLACE / "server").read_text().strip()
    subprocess.run(["createdb", "-h", folder, "-U", "postgres", name], check=True)
    base = f"Motor=postgres;Servidor={folder};Usuario=postgres;Base={name}"
    subprocess.run([Program.installed / "bin/kel-host", "preparar", "--base", base], check=True, stdout=subprocess.DEVNULL,
                   env=Program.environment_of(PLACE / "owner"))
    return ["--base", base]


def new_office(program):
    """The main window of a database that the program's first box has made."""
    program.window("Elegir la base de datos").press("Crear una nueva…")
    program.window("Crear una base de datos").press("Guardar")
    return Office(program)


def first_issuer(home, arguments):
    """The issuer's dialog opens all that it needs; without a database from nothing."""
    with Program(home, *arguments) as program:
        office = Office(program) if arguments else new_office(program)
        office.choose("Emisores")
        office.press("Agregar")
        issuer = program.window("Agregar emisor")
        issuer.press("Agregar un presentador nuevo")
        presenter = program.window("Presentador")
        presenter.press("Agregar un banco nuevo")
        bank = program.window("banco")
        bank.fill("Número", "0049")
        bank.fill("Nombre", "Banco del Encinar")
        bank.press("Aceptar")
        bank.gone()
        presenter.press("Agregar una sucursal nueva al banco")
        branch = program.window("sucursal")
        branch.fill("Código", "0001")
        branch.fill("Nombre", "Centro")
        branch.press("Aceptar")
        branch.gone()
        for dialog, name, identifier in ((presenter, "Gestoría", "G99000010"), (issuer, "Parroquia", "R9900001J")):
            dialog.fill("Nombre", name)
            dialog.fill("NIF / CIF" if dialog is presenter else "NIF", identifier)
            dialog.fill("Sufijo", "001")
            dialog.press("Aceptar")
            dialog.gone()
        until(lambda: "Parroquia" in office.rows(), "the issuer in the list")
        keys("ctrl+q")
        assert program.ended() == 0


def two_programs(home, arguments):
    with Program(home, *arguments, person="ana") as first:
        ana = Office(first)
        with Program(home, *arguments[:2], person="luis") as second:
            two_people(first, second, ana, Office(second))


def two_people(first, second, ana, luis):
    for office in (ana, luis):
        office.choose("Bancos")
    ana.add_bank("0049", "Banco del Encinar")
    until(lambda: "Banco del Encinar" in luis.rows(), "the new bank in the other list", 4)

    ana.select("Banco del Encinar")
    ana.press("Modificar")
    held = first.window("Propiedades del banco")
    luis.select("Banco del Encinar")
    luis.press("Modificar")
    second.answer("Aceptar")
    refused = second.window("Propiedades del banco")
    until(lambda: any("Lo está modificando" in text for text in refused.texts()), "who holds it")
    assert not refused.find("Aceptar").getState().contains(pyatspi.STATE_SENSITIVE)
    refused.press("Cancelar")
    refused.gone()
    held.fill("Nombre", "Banco del Alcornoque")
    held.press("Aceptar")
    held.gone()
    luis.select("Banco del Alcornoque")

    luis.press("Eliminar")
    second.answer("Sí")
    until(lambda: "Banco del Alcornoque" not in ana.rows(), "the bank's end in the other list", 4)
    click(luis.window.front().find("Registros", pyatspi.ROLE_TABLE))
    keys("ctrl+z")
    until(lambda: "Banco del Alcornoque" in ana.rows(), "the bank in the other list again", 4)


def rescue(home, arguments):
    """What was typed comes back after a Yes with a gap, and after an end by a signal."""
    with Program(home, *arguments) as program:
        office = Office(program)
        office.choose("Bancos")
        office.press("Agregar")
        dialog = program.window("Agregar banco")
        dialog.fill("Nombre", "Banco del Encinar")
        keys("Escape")
        program.answer("Sí")
        program.answer("Aceptar")
        office.strip("Lo que había escrito en «Agregar banco»")
        office.press("Volver a abrir con ello")
        again = program.window("Agregar banco")
        until(lambda: again.text("Nombre") == "Banco del Encinar", "the name that was typed")
        program.signal(signal.SIGTERM)
        program.answer("Sí")
        program.answer("Aceptar")
        program.ended()
    with Program(home, *arguments) as program:
        Office(program).strip("Lo que había escrito en «Agregar banco»")


def help_of_dialogs(home, arguments):
    with Program(home, *arguments) as program:
        office = Office(program)
        for node, title, control in (("Bancos", "Agregar banco", "Nombre"), ("Países", "Agregar país", "País")):
            office.choose(node)
            office.press("Agregar")
            dialog = program.window(title)
            click(dialog.front().find(control, pyatspi.ROLE_TEXT))
            keys("F1")
            page = program.window("Ayuda")
            until(lambda: page.text("Página de la ayuda").lower().startswith(title.split()[1]), f"the page of «{title}»")
            dialog.press("Cancelar")
            dialog.gone()


def killed_with_a_lock(home, arguments):
    """The lock of a program that was killed holds nobody up."""
    with Program(home, *arguments) as program:
        office = Office(program)
        office.choose("Bancos")
        office.add_bank("0049", "Banco del Encinar")
        office.select("Banco del Encinar")
        office.press("Modificar")
        program.window("Propiedades del banco").fill("Nombre", "Otro")
        program.signal(signal.SIGKILL)
        program.ended()
    with Program(home, *arguments) as program:
        office = Office(program)
        office.choose("Bancos")
        office.select("Banco del Encinar")
        office.press("Modificar")
        dialog = program.window("Propiedades del banco")
        dialog.fill("Nombre", "Banco del Alcornoque")
        dialog.press("Aceptar")
        dialog.gone()
        until(lambda: "Banco del Alcornoque" in office.rows(), "the bank's new name")


def idle_lock(home, arguments):
    """Passwords are asked for from now on; a program that nobody uses is locked over all that is open."""
    with Program(home, *arguments) as program:
        office = Office(program)
        office.menu("a", "u")
        users = program.window("Usuarios")
        users.press("Pedir usuario y contraseña al empezar")
        first = program.window("Primer administrador")
        for name, text in (("Usuario", "ana"), ("Contraseña nueva", PASSWORD), ("Repita la nueva", PASSWORD)):
            first.fill(name, text)
        first.press("Aceptar")
        first.gone()
        click(users.front().find("Minutos sin uso", pyatspi.ROLE_SPIN_BUTTON))
        keys("ctrl+a", "1", "Tab")
        users.press("Cerrar")
        users.gone()
        office.choose("Emisores")
        office.press("Agregar")
        issuer = program.window("Agregar emisor")
        issuer.fill("Nombre", "Parroquia")
        issuer.press("Agregar un presentador nuevo")
        presenter = program.window("Presentador")
        presenter.fill("Nombre", "Gestoría")
        lock = until(lambda: next((one for one in program.windows() if one.named("Desbloquear")), None), "the lock", 75)
        assert {one.title for one in program.windows()} == {"Kel"}
        keys("Escape", "z")
        lock.fill("Contraseña", "otra cosa")
        lock.press("Desbloquear")
        until(lambda: any("no son" in text or "no es" in text for text in lock.texts()), "a refusal")
        lock.fill("Contraseña", PASSWORD)
        lock.press("Desbloquear")
        lock.gone()
        for title, name in (("Presentador", "Gestoría"), ("Agregar emisor", "Parroquia")):
            assert program.window(title).text("Nombre") == name
        keys("ctrl+shift+l")
        until(lambda: {one.title for one in program.windows()} == {"Kel"}, "the lock again")
        program.signal(signal.SIGTERM)
        program.ended()
    with Program(home, *arguments[:2]) as program:
        program.window("Entrar").front()
        type_text("ana")
        keys("Tab")
        type_text(PASSWORD)
        keys("Return")
        Office(program).strip("Lo que había escrito en «Agregar emisor»")


def export_and_print(home, arguments):
    """The list that is seen, as other programs read it."""
    with Program(home, *arguments) as program:
        office = Office(program)
        office.choose("Bancos")
        office.add_bank("0049", "Banco del Encinar")
        office.add_bank("0075", "=1+1")
        folder = program.home
        for key, button, file in (("ctrl+e", "Guardar como…", folder / "bancos.ods"), ("ctrl+p", "Guardar PDF…", folder / "bancos.pdf")):
            office.window.front()
            keys(key)
            dialog = program.window("Imprimir «" if file.suffix == ".pdf" else "Exportar «")
            dialog.press(button)
            name_file(program, "Guardar «", file)
            until(file.exists, f"{file.name}")
            if file.suffix == ".pdf":
                dialog.press("Cerrar")
            dialog.gone()
        subprocess.run(["soffice", f"-env:UserInstallation=file://{folder}/office", "--headless", "--convert-to", "csv:Text - txt - csv (StarCalc):44,34,76",
                        "--outdir", folder, folder / "bancos.ods"], check=True, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, timeout=120)
        sheet = (folder / "bancos.csv").read_text()
        assert "0049,Banco del Encinar" in sheet and "0075,=1+1" in sheet, sheet
        page = subprocess.run(["pdftotext", "-layout", folder / "bancos.pdf", "-"], check=True, capture_output=True, text=True)
        for text in ("Bancos", "0049", "Banco del Encinar", "=1+1", "Página 1 de 1"):
            assert text in page.stdout, page.stdout


def name_file(program, title, file):
    """In the box that asks for one."""
    dialog = program.window(title)
    name = dialog.find("Nombre de fichero", pyatspi.ROLE_TEXT)
    dialog.front()
    click(name)
    keys("ctrl+a")
    type_text(str(file))
    keys("Return")
    dialog.gone()


def make_copy(program, office, file):
    office.menu("a", "o")
    copies = program.window("Copias de seguridad")
    copies.press("Hacer una copia…")
    name_file(program, "Hacer una copia", file)
    until(lambda: any("Copia hecha y comprobada" in text for text in copies.texts()), "the end of the copy")
    copies.press("Cerrar")
    copies.gone()


def damaged_file(home, arguments):
    """The database can't be opened any more: a copy takes its place, from the window."""
    with Program(home, *arguments) as program:
        office = new_office(program)
        office.choose("Bancos")
        office.add_bank("0049", "Banco del Encinar")
        copy = program.home / "copia.db"
        make_copy(program, office, copy)
        keys("ctrl+q")
        assert program.ended() == 0
        database = program.home / "data/Kel/kel.db"
    database.write_bytes(b"x" * 100 + database.read_bytes()[100:])
    with Program(home, *arguments) as program:
        program.answer("Aceptar")
        program.window("Elegir la base de datos").press("Restaurar una copia…")
        name_file(program, "Restaurar una copia", copy)
        program.answer("Aceptar")
        office = Office(program)
        office.choose("Bancos")
        until(lambda: office.rows() == ["0049", "Banco del Encinar"], "the bank of the copy")
        kept = [file for file in database.parent.iterdir() if "antes" in file.name]
        assert kept and kept[0].read_bytes().startswith(b"x" * 100)


def restore(home, arguments):
    with Program(home, *arguments) as program:
        office = Office(program)
        office.choose("Bancos")
        office.add_bank("0049", "Banco del Encinar")
        copy = program.home / "copia.db"
        make_copy(program, office, copy)
        office.add_bank("0075", "Banco del Olivar")
        office.menu("a", "o")
        program.window("Copias de seguridad").press("Restaurar otra…")
        name_file(program, "Restaurar una copia", copy)
        program.answer("Sí")
        office.window.gone()
        program.answer("Aceptar")
        office = Office(program)
        office.choose("Bancos")
        until(lambda: office.rows() == ["0049", "Banco del Encinar"], "the bank of the copy alone")


def no_file(_name):
    return []


# Passwords are a file's, and only a file can be damaged here.
PLACES = {"first_issuer": (no_file, server_database), "damaged_file": (no_file,), "idle_lock": (new_file,),
          "restore": (server_database,)}


def journeys():
    """A run by its name: "rescue" on a file, "rescue_on_a_server" on a server, on a database of its own each."""
    runs = {}
    for journey in (first_issuer, two_programs, rescue, help_of_dialogs, killed_with_a_lock, idle_lock, export_and_print,
                    damaged_file, restore):
        for place in PLACES.get(journey.__name__, (new_file, server_database)):
            name = journey.__name__ + ("_on_a_server" if place is server_database else "")
            runs[name] = lambda journey=journey, place=place, name=name: journey(PLACE / f"home_{name}", place(name))
    return runs


def main():
    Program.installed = pathlib.Path(sys.argv[1]).resolve()
    Program.pictures = pathlib.Path(sys.argv[2])
    wanted = sys.argv[3:]
    known = journeys()
    if set(wanted) - set(known):
        sys.exit("No hay esos recorridos. Son: " + ", ".join(known))
    failed = 0
    for name in wanted or known:
        begin = time.monotonic()
        try:
            known[name]()
            outcome = "bien"
        except Exception as fault:  # The other journeys are made all the same.
            failed += 1
            outcome = f"FALLO: {fault}"
            traceback.print_exc()
        print(f"{name:32}{time.monotonic() - begin:5.1f} s  {outcome}", flush=True)
    print(f"{len(wanted or known) - failed} recorridos bien, {failed} con fallos.")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
