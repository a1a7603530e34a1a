#pragma once

#include <string>

#include "files/Ini.h"
#include "state/FileRecords.h"
#include "state/Host.h"

namespace zu {

/// The [UserDefined] section: three lines for each entry with a pattern.
std::string TranslateText(const TranslateRecord& table);
/// Clears the table and reads [UserDefined] up to the first index without a pattern key.
void ReadTranslate(TranslateRecord& table, const IniText& ini);
/// Value and care mask of every entry in force from its pattern, the last character being bit 0, and the
/// count of entries in force. For whoever edits the texts.
void CompileTranslate(TranslateRecord& table);

/// Reads a translate table or the section of any settings file; false, the table untouched, if the file
/// cannot be opened.
bool LoadTranslateFile(TranslateRecord& table, const std::string& path);
/// Replaces a file by the section. A failure leaves the old file whole and is told by a remark only.
bool SaveTranslateFile(const TranslateRecord& table, Host& host, const std::string& path);

}  // namespace zu
