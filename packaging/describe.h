#pragma once

/// What the documents say of the unit, taken from the rows of the catalogue. Nothing is written here: every function
/// answers a text, a table or a whole document.

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "model/tables/catalogue.h"

// ---- Texts of single rows (describe_text.cpp)

/// The parts as one text.
std::string join(std::initializer_list<std::string_view> parts);

/// The fewest decimal digits that read back as the same number.
std::string number(double value);

/// Heading of a group of outputs.
std::string_view title(OutputGroup group);

/// What an importer reads beside the parameter and beside the gate of input k.
std::string parameter_text(std::size_t k);
std::string gate_text(std::size_t k);

// ---- Tables of the catalogue (describe_tables.cpp)

struct Table {
  enum class Kind { text, name, number };
  struct Column {
    std::string_view title;
    Kind kind;
  };
  std::vector<Column> columns;
  std::vector<std::vector<std::string>> rows;  ///< one cell a column, plain text
};

Table input_table();
Table output_table(OutputGroup group);
Table unit_table();
Table state_table();
Table memory_table();

// ---- Documents

/// modelDescription.xml (describe_model.cpp).
std::string model_description();

/// The page for an importer's user, in HTML: the template with each {{word}} replaced (describe_page.cpp).
/// @throws std::runtime_error naming a word of the template that means nothing here
std::string index_page(std::string_view page_template);

/// The variables, and the states and memories, in Markdown (describe_page.cpp).
std::string variables_document();
std::string states_document();
