#pragma once

#include <bit>
#include <cstddef>
#include <iterator>
#include <type_traits>
#include <utility>

/// Rows of doubles that are kept field by field: what a law asks of neighbouring rows lies side by side, so that the
/// compiler computes several at once.
///
/// A row is a copy: what is assigned to it goes nowhere.
template <class Row, std::size_t n>
struct Columns {
  using row = Row;
  double column[sizeof(Row) / sizeof(double)][n];

  [[gnu::always_inline]] constexpr Row operator[](std::size_t i) const {
    FieldsOf<Row> fields;
    for (std::size_t k = 0; k < std::size(fields.value); ++k) fields.value[k] = column[k][i];
    return std::bit_cast<Row>(fields);
  }
  /// Takes over a row, or its first fields.
  template <class Part>
  [[gnu::always_inline]] constexpr void set(std::size_t i, const Part& from) {
    static_assert(sizeof(Part) <= sizeof(Row));
    const auto fields = std::bit_cast<FieldsOf<Part>>(from);
    for (std::size_t k = 0; k < std::size(fields.value); ++k) column[k][i] = fields.value[k];
  }

 private:
  template <class Part>
  struct FieldsOf {
    double value[sizeof(Part) / sizeof(double)];
  };
};

/// Where columns keep a value of row i, for who reads or writes it there.
#define COLUMN_CELL(columns, i, value) \
  (&(columns).column[offsetof(std::remove_reference_t<decltype(columns)>::row, value) / sizeof(double)][i])

/// Calls f with 0 to n - 1 as constants, so that each call is compiled for its row of a table.
template <std::size_t n, class Function>
[[gnu::always_inline]] constexpr void for_each_row(Function&& f) {
  [&]<std::size_t... i>(std::index_sequence<i...>) { (f(std::integral_constant<std::size_t, i>{}), ...); }
  (std::make_index_sequence<n>{});
}
