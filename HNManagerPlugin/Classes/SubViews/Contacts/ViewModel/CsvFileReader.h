// Reads the CSV files of contacts that our own exporter writes, by a fixed vocabulary of column headings. No general CSV
// reader: a file of one contact may break its lines inside quotes, a file of several has one contact a line, and what
// other programs write is rewritten into this shape before it comes here.
//
// Input    UTF-8. Headings are not unquoted; a byte order mark belongs to the first one.
// First    reader (`load...DataFromPath`): all behind the first line is one record. Lines come in pieces of at most
//          102,399 bytes (the heading: 10,239, what is longer counts as rows); the last piece is lost where the file does
//          not end with a line end. It gives one record where that has as many fields as there are headings.
// Second   reader, asked where the first found none: one record per line at any line break; others than with the right
//          number of fields are dropped.
// Stages   backslashes, commas inside quotes, the cut, its repair (CsvText.h); then a dictionary per record.
// Errors   FatalParseFailure with file, line (from 1) and reason: a record without text, a field of one quote, a group of
//          columns that runs past the end; first reader: a piece that is not UTF-8.
// Nothing  a file that cannot be opened, or that reaches the second reader and is not UTF-8, gives the empty list.
// Cost     grows with the file's length. Threads: any, no state between calls.
#pragma once

#include <memory>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

class CsvColumns;

// One record: headings to texts, as far as anybody looks at them. A heading that stands twice has the later one's texts.
struct CsvDictionary {
    std::shared_ptr<const CsvColumns> columns;
    std::vector<NSString> values;   // in the order of `columns`
    std::int64_t line = 0;

    // One text of a plain column, the raw texts of a group under the heading of its first one; none for others.
    [[nodiscard]] std::vector<NSString> textsUnder(const NSString &heading) const;
};

class CsvFileReader {
public:
    using Dictionaries = std::vector<CsvDictionary>;

    [[nodiscard]] static Dictionaries loadImportContactsCSVDataFromPath(const NSString &path);
    // Decodes UTF-8, whatever its name says; kept.
    [[nodiscard]] static Dictionaries loadImportCSVGBKEncodingDataFromPath(const NSString &path);
    // The same on bytes in memory; `file` only names them in a failure.
    [[nodiscard]] static Dictionaries firstReader(std::string_view bytes, const NSString &file);
    [[nodiscard]] static Dictionaries secondReader(std::string_view bytes, const NSString &file);
    // Groups come in the order of their columns.
    [[nodiscard]] static ContactList parseCSVContactDictionary(const Dictionaries &dictionaries, const NSString &file);

    // loadImport... and parse.
    [[nodiscard]] static ContactList read(const NSString &path);
};
