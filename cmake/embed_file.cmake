# cmake -DINPUT=file -DOUTPUT=file -P embed_file.cmake
# Writes the bytes of INPUT to OUTPUT as hexadecimal numbers with commas.
file(READ "${INPUT}" bytes HEX)
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," numbers "${bytes}")
string(REPEAT "0x..," 16 line)
string(REGEX REPLACE "(${line})" "\\1\n" lines "${numbers}")
file(WRITE "${OUTPUT}" "${lines}\n")
