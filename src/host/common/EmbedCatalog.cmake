# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors

# cmake -DIN=messages.catalog -DOUT=catalog.cpp -P EmbedCatalog.cmake: checks each line and puts the text into a C++ source.
file(READ ${IN} text)
string(REGEX REPLACE "[][;]" " " lines "${text}")
string(REPLACE "\n" ";" lines "${lines}")
set(number 0)
foreach(line IN LISTS lines)
  math(EXPR number "${number} + 1")
  if(NOT line MATCHES "^(#.*)?$" AND NOT line MATCHES "^@[0-9]+-[0-9]+@(%[sd])* = [^ ].*[^ ]$")
    message(FATAL_ERROR "${IN}:${number}: expected a comment or 'KEY = words'")
  endif()
endforeach()
file(WRITE ${OUT} "extern const char hostMessageCatalog[];\nconst char hostMessageCatalog[] = R\"catalog(${text})catalog\";\n")
