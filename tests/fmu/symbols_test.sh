#!/bin/sh
# symbols_test.sh PLATFORM LIBRARY OBJDUMP FUNCTIONS
#
# The library exports the FMI functions, all of them and nothing else, and asks for nothing that a machine of its
# platform may lack.
set -eu
platform=$1 library=$2 objdump=$3 functions=$4

same() { # same WHAT EXPECTED FOUND
  [ "$2" = "$3" ] && return
  printf '%s: %s\nexpected:\n%s\nfound:\n%s\n' "$library" "$1" "$2" "$3"
  exit 1
}

fmi=$(sed -n 's/^FMI2_FUNCTION(\([A-Za-z0-9]*\),.*/\1/p' "$functions" | sort)
same "number of functions" 44 "$(echo "$fmi" | wc -l)"
case $platform in
win64)
  headers=$("$objdump" -p "$library")
  same exports "$fmi" "$(echo "$headers" | sed -n '/Name Pointer\] Table/,/^$/s/.*] //p' | grep -v Table | sort)"
  same libraries "$(printf 'KERNEL32.dll\nmsvcrt.dll')" "$(echo "$headers" | sed -n 's/.*DLL Name: //p' | sort)"
  # The mathematics of Windows differ from one version to the next. (log10 may stay, for a correlation that the plant
  # does not use.)
  same mathematics "" "$(echo "$headers" | grep -wE 'atan|exp|log|pow|sin|tanh' || true)"
  ;;
linux64 | aarch64-linux)
  symbols=$("$objdump" -T "$library")
  same exports "$fmi" "$(echo "$symbols" | awk '/^[0-9a-f]+ [^l]/ && !/\*UND\*/ { print $NF }' | sort)"
  same libraries "$(printf 'libc.so.6\nlibgcc_s.so.1\nlibm.so.6\nlibstdc++.so.6')" \
    "$("$objdump" -p "$library" | awk '$1 == "NEEDED" { print $2 }' | grep -v '^ld-linux' | sort)"
  same "folders of its own" "" "$("$objdump" -p "$library" | grep -E '^ *(RPATH|RUNPATH)' || true)"
  # Versions of 2013, when glibc 2.17 and the libraries of GCC 4.8 were new.
  versions=$(echo "$symbols" | grep -o '(G[A-Z]*_[0-9.]*)\|(CXXABI_[0-9.]*)' | tr -d '()')
  same "versions found" yes "${versions:+yes}"
  for newest in GLIBC_2.17 GLIBCXX_3.4.19 CXXABI_1.3.7; do
    of_prefix=$(printf '%s\n%s\n' "$versions" "$newest" | grep "^${newest%_*}_" | sort -Vu)
    same "versions of ${newest%_*}" "$newest" "$(echo "$of_prefix" | tail -n 1)"
  done
  ;;
*)
  echo "symbols_test.sh: no platform $platform"
  exit 2
  ;;
esac
