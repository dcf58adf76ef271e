#!/bin/sh
# A row whose text and function disagree does not compile, and the error says why:
#   check_declaration_errors.sh CXX SOURCE_DIR
set -u
cxx=$1
source_dir=$2
failures=0

compile() {
  printf '%s\n' '#include "host/class_table.h"' \
    'struct Data { int32_t number; Boolean truth; REALstring text; };' \
    'int32_t read(REALobject);' 'void read_by_index(REALobject, int32_t, bool);' \
    'void assign_real(REALobject, double);' 'bool next(REALobject, int32_t*);' \
    'int32_t get(REALobject, intptr_t);' 'void set(REALobject, intptr_t, int32_t);' \
    "$1" |
    "$cxx" -std=c++20 -fsyntax-only -x c++ -I "$source_dir/plugin" -I "$source_dir/plugin/include" \
      -I "$source_dir/toolbox/include" - 2>&1
}

# accepts ROW / refuses ERROR ROW
accepts() {
  if ! output=$(compile "$1"); then
    echo "refused: $1"
    echo "$output"
    failures=$((failures + 1))
  fi
}
refuses() {
  output=$(compile "$2")
  if [ $? -eq 0 ]; then
    echo "accepted: $2"
    failures=$((failures + 1))
  elif ! echo "$output" | grep -q "$1"; then
    echo "no word of $1: $2"
    echo "$output"
    failures=$((failures + 1))
  fi
}

accepts 'MethodEntry rows[] = {METHOD(read, "Count as integer"),
  METHOD(read_by_index, "Take(index as integer, all as boolean = true)"),
  METHOD(next, "Next(byref time as integer) as boolean")};
  PropertyEntry fields[] = {DIRECT_FIELD(Data, number, "Number", "Integer"), PROPERTY(get, set, "Size", "Integer")};
  ConstantEntry constants[] = {CONSTANT("kOne = 1"), CONSTANT("kText = \"text\"")};'
refuses the_result_type_differs_from_the_declaration 'MethodEntry row = METHOD(read, "Count as boolean");'
refuses the_result_type_differs_from_the_declaration 'MethodEntry row = METHOD(read, "Count");'
refuses the_function_has_more_parameters_than_the_declaration 'MethodEntry row = METHOD(read_by_index, "Take");'
refuses the_function_has_more_parameters_than_the_declaration \
  'MethodEntry row = METHOD(read_by_index, "Take(index as integer)");'
refuses the_function_has_fewer_parameters_than_the_declaration 'MethodEntry row = METHOD(read, "Count(i as integer) as integer");'
refuses a_parameter_type_differs_from_the_declaration \
  'MethodEntry row = METHOD(read_by_index, "Take(index as integer, all as integer)");'
refuses a_parameter_type_differs_from_the_declaration 'MethodEntry row = METHOD(next, "Next(time as integer) as boolean");'
refuses the_declaration_names_an_unknown_type 'MethodEntry row = METHOD(read, "Count as integr");'
refuses the_default_value_does_not_fit_its_type \
  'MethodEntry row = METHOD(read_by_index, "Take(index as integer, all as boolean = 1)");'
refuses the_setter_differs_from_the_declared_type 'MethodEntry row = ASSIGNABLE(read, assign_real, "Count as integer");'
refuses the_field_type_differs_from_the_declared_type 'PropertyEntry row = DIRECT_FIELD(Data, truth, "Truth", "Integer");'
refuses the_field_type_differs_from_the_declared_type 'PropertyEntry row = DIRECT_FIELD(Data, text, "Text", "Movie");'
refuses the_result_type_differs_from_the_declaration 'PropertyEntry row = PROPERTY(get, set, "Size", "Color");'
refuses the_constant_is_neither_an_integer_nor_a_quoted_text 'ConstantEntry row = CONSTANT("kOne = one");'
exit $((failures > 0))
