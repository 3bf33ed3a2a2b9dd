#pragma once

namespace mMoon {

/// Opens the settings file, "\vesk.dat" in the program's folder, for the whole run. A missing file is created empty.
/// Errors: 55 File already open; those of forms::RandomFile.
void OpenSettingsFile();

/// Reads the record into Settings; a record beyond the end of the file reads as zeros, so that every option is false.
/// Errors: 52 Bad file name or number when the file is not open; those of forms::RandomFile.
void ReadSettings();

/// Writes Settings as the record. Errors: as ReadSettings.
void WriteSettings();

/// Closes the file; does nothing when it is not open.
void CloseSettingsFile() noexcept;

}  // namespace mMoon
