# The rules of check_layers over the files given: the table of floors, then sources, whose paths are
# relative to the tree.

# The folder of the house that a path below src/ lies in; empty for none.
function room(path,    parts) {
  split(path, parts, "/")
  if (parts[1] == "framework") {
    return parts[1] "/" parts[2]
  }
  return (parts[1] in floor) ? parts[1] : ""
}

function fault(text) {
  printf "%s:%d: %s\n", FILENAME, FNR, text
  faults++
}

function check_own_include(header,    to) {
  to = room(header)
  if (to != "" && !(to in floor)) {
    fault("unknown folder in \"" header "\"")
  } else if (in_tools) {
    if (to != "" && to != "support" && to != "link" && to != "button_file") {
      fault("a tool includes \"" header "\" of the user interface")
    }
  } else if (to != "" && to != here && from_floor <= floor[to]) {
    fault("upward include: " here " includes \"" header "\"")
  }
  if (header ~ /_xm\.h$/ && !may_see_motif) {
    fault("private header \"" header "\" included in a public one or outside the framework")
  }
}

function check_system_include(header) {
  if (header ~ /^(Xm|Mrm|uil)\// || header ~ /^X11\/(Intrinsic|StringDefs|Shell|Xt|Core|Composite|Object|RectObj|Vendor|Xmu\/)/) {
    if (!may_see_motif) {
      fault("Motif or Xt header <" header ">")
    }
  } else if (header ~ /^X11\// && !may_see_x) {
    fault("X header <" header ">")
  }
}

# The line without comments and texts; in_comment lasts from line to line.
function code_of(line,    result, start, stop) {
  gsub(/\\./, "", line)
  gsub(/"[^"]*"/, "\"\"", line)
  result = ""
  while (line != "") {
    if (in_comment) {
      stop = index(line, "*/")
      if (stop == 0) {
        return result
      }
      line = substr(line, stop + 2)
      in_comment = 0
    } else {
      start = match(line, /\/[\/*]/)
      if (start == 0) {
        return result line
      }
      result = result substr(line, 1, start - 1)
      if (substr(line, start, 2) == "//") {
        return result
      }
      line = substr(line, start + 2)
      in_comment = 1
    }
  }
  return result
}

# The table of floors comes first: rows of "| floor | `folder` | ...".
FILENAME ~ /floors\.md$/ {
  if (split($0, cells, "|") > 2 && cells[2] ~ /^ *[0-9]+ *$/) {
    gsub(/[` ]/, "", cells[3])
    floor[cells[3]] = cells[2] + 0
  }
  next
}

FNR == 1 {
  in_comment = 0
  in_tools = FILENAME ~ /^tools\//
  path = FILENAME
  sub(/^(src|tools)\//, "", path)
  here = in_tools ? "" : room(path)
  # The entry of the program lies above all floors.
  from_floor = (here in floor) ? floor[here] : 99
  in_framework = !in_tools && path ~ /^framework\//
  is_public = path ~ /\.h$/ && path !~ /_xm\.h$/
  may_see_motif = (in_framework || path == "dialogs/file_form.cpp") && !is_public
  may_see_x = may_see_motif
  if (in_framework && !(here in floor)) {
    fault("folder " here " has no floor")
  } else if (!in_tools && here == "" && path ~ /\//) {
    fault("folder of " path " has no floor")
  }
}

{
  line = $0
}

line ~ /^[ \t]*#[ \t]*include[ \t]*"/ {
  header = line
  sub(/^[^"]*"/, "", header)
  sub(/".*/, "", header)
  check_own_include(header)
  next
}

line ~ /^[ \t]*#[ \t]*include[ \t]*</ {
  header = line
  sub(/^[^<]*</, "", header)
  sub(/>.*/, "", header)
  check_system_include(header)
  next
}

{
  code = code_of(line)
  if (match(code, /(^|[^A-Za-z0-9_])(strcpy|strcat|sprintf|vsprintf|gets)[ \t]*\(/)) {
    fault("banned call:" substr(code, RSTART, RLENGTH))
  }
  if (in_framework && code ~ /(^|[^A-Za-z0-9_])dynamic_cast[ \t]*</) {
    fault("dynamic_cast in the framework")
  }
}

END {
  exit faults > 0
}
