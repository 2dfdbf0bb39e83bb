#pragma once

/// The numbers of the errors that a database raises, whatever its engine, each with a Spanish text that says what to
/// do.
///
/// From the platform also 6 (a number beyond its column) and 13 (a text that is no number).
namespace adodb {

enum ErrorNumber : int {
  // What a Connection or a Recordset cannot do in its state.
  NoCurrentRow = 3021,
  NoSuchField = 3265,
  ObjectClosed = 3704,
  ObjectOpen = 3705,
  TransactionActive = -2147168237,
  NoTransaction = -2147168242,

  Stopped = 18,  ///< Work that was asked to end (see database/Maintenance.h).

  // Statements.
  SyntaxError = -2147217900,          ///< The text is no statement of the dialect.
  StatementRefused = -2147217911,     ///< Not a SELECT, INSERT, UPDATE or DELETE, or more than one statement.
  NoSuchTable = -2147217865,          ///< A table that the database does not have.
  NoSuchColumn = -2147217904,         ///< A column that no table has, or that several have.
  ConstraintViolation = -2147217873,  ///< A value that is missing, repeated or not allowed.
  StatementTooBig = -2147217833,      ///< A statement or a value beyond the engine's limits.
  TransactionLost = -2147168238,      ///< The engine undid the whole transaction after an error.

  // The database: a file, or one on a server.
  InvalidConnectionString = -2147467260,  ///< A connection string that cannot be read.
  CannotOpen = -2147467259,               ///< The file or its folder cannot be found, opened or created.
  DatabaseLocked = -2147217887,           ///< Another program holds the database for too long.
  DatabaseReadOnly = -2147217895,         ///< The file or its folder may not be written.
  DiskFull = -2147024784,                 ///< No room left on the disk.
  DiskFailure = -2147024867,              ///< The disk failed while reading or writing.
  DatabaseDamaged = -2147023504,          ///< The file is damaged.
  NotADatabase = -2147023503,             ///< The file is something else.
  NotOurDatabase = -2147023502,           ///< A database of another program.
  NewerDatabase = -2147023501,            ///< Written by a newer version of this program.
  OlderDatabase = -2147023499,            ///< Written by an older version and not yet prepared.
  InvalidSchema = -2147023500,            ///< The program's own description of the schema is wrong.
  EngineFailure = -2147217843,            ///< Any other refusal of the engine, with the engine's own text.
};

}  // namespace adodb
