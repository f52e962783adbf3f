#!/bin/sh
# What the built library brings into a process. Usage: check_library.sh load|exports|state LIBRARY [EMPTY]
#
#   load     it runs nothing of its own when it is loaded: its lists of start and end functions are as long
#            as those of the library EMPTY, which holds nothing
#   exports  it exports every plain function of the interface, and nothing that is not of the interface
#   state    it has no variable but the few that are known
set -eu
library=$2

# Lines of standard input that the pattern does not know; fails if there are any.
refuse_all_but() {
  if grep -vE "$1"; then
    echo "^ not expected in $library"
    exit 1
  fi
}

function_lists() {
  readelf -SW "$1" | sed 's/^ *\[ *[0-9]*\] *//' |
    awk '$1 ~ /^\.(preinit_array|init_array|fini_array|ctors|dtors)$/ { print $1, $5 }'
}

# The functions of the interface that are no members; all have a plain name, without a signature.
functions='staticFileOutput staticAssertTrace staticReturnNull
  nextPrimeNumber prevPrimeNumber greatestCommonDivisor maxRandomNumber zvGetCurrentWorkingDir
  getModuleHandle getModuleFileName freeModuleHandle getFunctionHandle
  displayErrorMessage getStringResource
  zvInternalOpenAppend zvInternalOpenAppendBin zvInternalWrite zvInternalRead zvInternalFeof
  initSyntaxObjectIterEncapsulation getFromSyntaxObjectIterEncapsulation
  incrementSyntaxObjectIterEncapsulation checkListEndSyntaxObjectIterEncapsulation
  initSyntaxFieldIterEncapsulation getFromSyntaxFieldIterEncapsulation
  incrementSyntaxFieldIterEncapsulation checkListEndSyntaxFieldIterEncapsulation'
# Beside the classes: the carrier of lines, and what tests of the library itself reach into.
classes='ZV|CArchive|CString|zvnumber::|zvAssertionFailed\('

case $1 in
  load)
    function_lists "$library" >lists
    function_lists "$3" >expected_lists
    grep -q init_array expected_lists
    diff expected_lists lists
    ;;
  exports)
    nm -D --defined-only "$library" >symbols
    if grep ' u ' symbols; then
      echo "^ would keep the library from being unloaded"
      exit 1
    fi
    awk '{ print $3 }' symbols >exports
    for name in $functions; do
      grep -qx "$name" exports || { echo "$name is not exported"; exit 1; }
    done
    known=$(echo $functions | tr ' ' '|')
    c++filt <exports >names
    refuse_all_but "^($known)$|^(vtable for |typeinfo for |typeinfo name for )?($classes)" <names
    ;;
  state)
    objdump -t -C "$library" | grep -E '[[:space:]]\.t?(data|bss)[[:space:]]' |
      awk '{ $1 = ""; sub(/^.*\.t?(data|bss) [0-9a-f]+ /, ""); print }' >variables
    grep -q 'ZVObject::pthreadEnv' variables
    runtime='\.t?(data|bss)|completed\.[0-9]+|dtor_idx\.[0-9]+|(\.hidden )?(__dso_handle|__TMC_END__|DW\.ref\..*)'
    ours='ZVObject::(pthreadEnv|envCount|factory|idGet|idDel|tight|nextIdentity)'
    platform='zvplatform::\(anonymous namespace\)::failedHandles'
    refuse_all_but "^($runtime|$ours|$platform|_edata|__bss_start|_end)$" <variables
    ;;
  *)
    exit 2
    ;;
esac
