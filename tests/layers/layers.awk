# The rules of check_layers over the files given: the table of floors, then sources, whose paths are
# relative to the tree.

# The folder of the house that a path below src/ lies in.
function room(path,    parts) {
  split(path, parts, "/")
  return parts[1] == "framework" ? parts[1] "/" parts[2] : parts[1]
}

# The tester on GDB is built up in folders: some stand alone, words see of the session what they may
# do, and the session puts all together.
function is_upward_in_gdb(path, header,    from, to) {
  if (path !~ /^gdb\/[a-z]+\// || header !~ /^gdb\//) {
    return 0
  }
  split(path, from, "/")
  split(header, to, "/")
  if (from[2] == "words") {
    return to[2] !~ /^(words|mi)$/ && header != "gdb/session/control.h"
  }
  return from[2] != "session" && from[2] != to[2]
}

function fault(text) {
  printf "%s:%d: %s\n", FILENAME, FNR, text
  faults++
}

# The table of floors comes first: rows of "| floor | `folder` | ...".
FILENAME ~ /floors\.md$/ {
  if ($2 ~ /^[0-9]+$/) {
    gsub(/`/, "", $4)
    floor[$4] = $2 + 0
  }
  next
}

FNR == 1 {
  in_tools = FILENAME ~ /^tools\//
  path = FILENAME
  sub(/^(src|tools)\//, "", path)
  here = in_tools ? "" : room(path)
  in_framework = here ~ /^framework\//
  is_public = path ~ /\.h$/ && path !~ /_xm\.h$/
  # The launcher looks whether there is a display.
  sees_windows = (in_framework || path ~ /^(dialogs\/file_form|launcher\/main)\.cpp$/) && !is_public
  if (!in_tools && path ~ /\// && !(here in floor)) {
    fault("folder " here " has no floor")
  }
}

$1 == "#include" {
  header = substr($2, 2, length($2) - 2)
  to = room(header)
  # The entry of the program lies above all floors.
  if ($2 ~ /^</) {
    if (header ~ /^(X11|Xm|Mrm|uil)\// && !sees_windows) {
      fault("window system header <" header ">")
    }
  } else if (in_tools && to in floor && to !~ /^(support|link|button_file)$/) {
    fault("a tool includes \"" header "\" of the user interface")
  } else if (here in floor && to in floor && to != here && floor[here] <= floor[to]) {
    fault("upward include: " here " includes \"" header "\"")
  } else if (in_tools && is_upward_in_gdb(path, header)) {
    fault("upward include in the tester on GDB: \"" header "\"")
  } else if (header ~ /_xm\.h$/ && !sees_windows) {
    fault("private header \"" header "\" included in a public one or outside the framework")
  }
  next
}

{
  code = $0
  gsub(/\\./, "", code)
  gsub(/"[^"]*"/, "\"\"", code)
  gsub(/\/\*[^*]*\*\/|\/\/.*/, "", code)
  if (match(code, /(^|[^A-Za-z0-9_])(strcpy|strcat|v?sprintf|gets)[ \t]*\(/)) {
    fault("banned call:" substr(code, RSTART, RLENGTH))
  }
  if (in_framework && code ~ /(^|[^A-Za-z0-9_])dynamic_cast[ \t]*</) {
    fault("dynamic_cast in the framework")
  }
}

END {
  exit faults > 0
}
