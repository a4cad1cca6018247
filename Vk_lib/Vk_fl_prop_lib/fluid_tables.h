#pragma once

namespace Vk_fl_prop_lib {

/// Reads the coefficient vector of one fluid from the table file of its type, in the folder "../tables" of the working
/// directory.
///
/// A table file has comment lines, whose first word begins with '#', ahead of its first record. A record is the
/// fluid's name as the first word of a line, the rest of that field up to a tab, one more field up to a tab, and the
/// values, which may run over several lines. A record with too few values takes words of the next one.
/// @param type    0 aeration, 1 brine, 2 liquid, 3 ideal gas, 5 refrigerant, 6 moist air; water (4) has no table
/// @param name    the fluid's name; case does not count
/// @param coeffs  room for the vector: 60, 97, 31, 25, 61 and 10 values for the types above, in this order. Values from
///                the first one on that is not a number are left as they were
/// @param msg     on failure, except for type 4, the reason: room for 50 characters and the name
/// @return 0 on success; 1 if the type is unknown, its file can not be opened or does not have the fluid
int getCoeffs(int type, const char* name, double* coeffs, char* msg);

/// The same from the table file at path.
int getCoeffs(int type, const char* name, const char* path, double* coeffs, char* msg);

/// The name of a type's table file; null if it has none.
const char* table_file(int type);

}  // namespace Vk_fl_prop_lib
