#!/usr/bin/python3
"""Merges a letter with people into one PDF by LibreOffice, to compare with.

Usage: office_merge.py LETTER FOLDER OUT. LETTER is RTF whose fields are the columns of FOLDER/people.csv in brackets; the PDF
appears in OUT. The office runs in a profile of its own inside FOLDER and ends with this program, whose processor time is
both's.
"""

import pathlib
import subprocess
import sys
import time

import uno
from com.sun.star.beans import PropertyValue


def connect(pipe, office):
    local = uno.getComponentContext()
    resolver = local.ServiceManager.createInstanceWithContext("com.sun.star.bridge.UnoUrlResolver", local)
    for _ in range(600):
        if office.poll() is not None:
            sys.exit("the office has ended")
        try:
            return resolver.resolve(f"uno:pipe,name={pipe};urp;StarOffice.ComponentContext")
        except Exception:  # It has not opened its pipe yet.
            time.sleep(0.1)
    sys.exit("the office does not answer")


def register_people(manager, folder):
    contexts = manager.createInstance("com.sun.star.sdb.DatabaseContext")
    source = contexts.createInstance()
    source.URL = f"sdbc:flat:{folder.as_uri()}"
    source.Info = (PropertyValue("Extension", 0, "csv", 0), PropertyValue("HeaderLine", 0, True, 0),
                   PropertyValue("FieldDelimiter", 0, ",", 0))
    source.DatabaseDocument.storeAsURL((folder / "people.odb").as_uri(), ())
    contexts.registerObject("people", source)


def put_fields(document, columns):
    places = []
    for column in columns:
        search = document.createSearchDescriptor()
        search.SearchString = f"[{column}]"
        found = document.findAll(search)
        places += [(column, found.getByIndex(i)) for i in range(found.Count)]
    # Behind the first field nothing is found any more.
    for column, place in places:
        master = document.createInstance("com.sun.star.text.FieldMaster.Database")
        master.DataBaseName, master.DataTableName, master.DataColumnName = "people", "people", column
        field = document.createInstance("com.sun.star.text.TextField.Database")
        field.attachTextFieldMaster(master)
        place.Text.insertTextContent(place, field, True)


def merge(manager, desktop, letter, folder, out, columns):
    register_people(manager, folder)
    document = desktop.loadComponentFromURL(letter.as_uri(), "_blank", 0, (PropertyValue("Hidden", 0, True, 0),))
    put_fields(document, columns)
    template = (folder / "letter.odt").as_uri()
    document.storeAsURL(template, (PropertyValue("FilterName", 0, "writer8", 0),))
    document.close(True)
    mailing = manager.createInstance("com.sun.star.text.MailMerge")
    mailing.DataSourceName, mailing.CommandType, mailing.Command = "people", 0, "people"
    mailing.DocumentURL, mailing.OutputURL = template, out.as_uri()
    mailing.OutputType, mailing.SaveAsSingleFile, mailing.SaveFilter = 2, True, "writer_pdf_Export"
    mailing.execute(())


def main():
    letter, folder, out = (pathlib.Path(argument).resolve() for argument in sys.argv[1:4])
    columns = (folder / "people.csv").read_text(encoding="utf-8").splitlines()[0].split(",")
    pipe = f"kel{folder.name}"
    office = subprocess.Popen(["soffice", f"-env:UserInstallation={(folder / 'profile').as_uri()}", "--headless", "--norestore",
                               f"--accept=pipe,name={pipe};urp"])
    context = connect(pipe, office)
    desktop = context.ServiceManager.createInstanceWithContext("com.sun.star.frame.Desktop", context)
    try:
        merge(context.ServiceManager, desktop, letter, folder, out, columns)
    finally:
        try:
            desktop.terminate()
        except uno.getClass("com.sun.star.lang.DisposedException"):
            pass  # It is gone before it can answer.
        office.wait(60)


if __name__ == "__main__":
    main()
