#pragma once

// Part of the framework's interface that this program does not use; compiled, its behaviour is not
// under test.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Menu resources: a menu as a flat array of records, in memory or in a resource file.

/// What a record stands for.
enum MenuRecordType : int {
  kMenuRecordItem = 0,
  kMenuRecordSeparator = 1,
  kMenuRecordSubMenu = 2,     ///< the records up to the matching end are its lines
  kMenuRecordSubMenuEnd = 3,  ///<
  kMenuRecordEnd = 4,         ///< ends the resource
};

/// Flag bits of a record; they are not those of a menu item.
enum MenuRecordFlag : unsigned {
  kMenuRecordChecked = 1,
  kMenuRecordGreyed = 2,
  kMenuRecordHelp = 4,
  kMenuRecordDisabled = 8,
};

struct zMenuRecord {
  int id = 0;
  std::optional<std::string> text;
  int type = kMenuRecordEnd;
  unsigned flags = 0;
};

/// A line of the menu that the records describe.
struct ziMenuLine {
  int id = 0;
  std::string text;
  unsigned flags = 0;  ///< MenuItemFlag; kItemSubMenu when `lines` are its own
  std::vector<ziMenuLine> lines;
};

/// What reading a resource gave. The lines that were read before a fault are there.
struct ziMenuReading {
  std::vector<ziMenuLine> lines;
  std::string errors;  ///< whole lines for standard error
};

/// The flags of a menu item for those of a record.
unsigned menuItemFlags(unsigned recordFlags);

/// Reads up to the record that ends the resource, or to the end of the array.
ziMenuReading readMenuRecords(std::span<const zMenuRecord> records);

/// The records of a resource file's menu: four big-endian words each, the text as a byte that says
/// whether there is one, its length as a big-endian word, and its bytes. Ends behind the record
/// that ends the resource, or before one that the data do not hold whole.
std::vector<zMenuRecord> decodeMenuRecords(std::string_view bytes);

/// The line for standard error when there is no menu resource of this id.
std::string missingMenuResource(int resourceId);
