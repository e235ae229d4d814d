# SPDX-License-Identifier: Apache-2.0
#
# Turns the help of one (sub)command into a manual page:
#   awk -v name=chartbridge-render -v version=1.0.0 -v common=common.roff -f help-to-roff.awk

# A text with what roff would take for markup.
function escaped(text) {
  gsub(/\\/, "\\e", text)
  gsub(/-/, "\\-", text)
  sub(/^[.']/, "\\\\\\&&", text)
  return text
}

function heading(text) {
  print ".SH " toupper(text)
}

# The left column of an option or argument: names bold, the kind of value in italics.
function term(text,    count, words, i, line, note) {
  count = split(text, words, " ")
  line = "\\fB" escaped(words[1]) "\\fR"
  gsub(/,/, "\\fR, \\fB", line)
  for (i = 2; i <= count; ++i) {
    if (match(words[i], /=/)) {
      note = note " (default: " escaped(substr(words[i], RSTART + 1)) ")"
      words[i] = substr(words[i], 1, RSTART - 1)
    }
    sub(/:[A-Z]+$/, "", words[i])
    if (words[i] == "REQUIRED") note = note " (required)"
    else line = line " \\fI" escaped(words[i]) "\\fR"
  }
  print ".TP"
  print line note
}

# The subcommand NAME of this page, as a reference to its own page.
function reference(text, description) {
  print ".TP"
  print "\\fB" escaped(name "-" text) "\\fR(1)"
  print escaped(description)
}

function entry(line,    left, right) {
  sub(/^  /, "", line)
  left = line
  right = ""
  if (match(line, /   +/)) {
    left = substr(line, 1, RSTART - 1)
    right = substr(line, RSTART + RLENGTH)
  }
  if (section == "Subcommands") {
    reference(left, right)
    return
  }
  term(left)
  if (right != "") print escaped(right)
}

function endVerbatim() {
  if (verbatim) print ".fi"
  verbatim = 0
}

BEGIN {
  title = name
  gsub(/-/, " ", title)
  printf ".TH %s 1 \"\" \"chartbridge %s\" \"chartbridge\"\n", toupper(escaped(name)), version
}

# The first paragraph says what the command does.
NR == 1 {
  summary = $0
  brief = toupper(substr(summary, 2, 1)) == substr(summary, 2, 1) ? summary : \
          tolower(substr(summary, 1, 1)) substr(summary, 2)
  sub(/\.$/, "", brief)
  heading("Name")
  print escaped(name) " \\- " escaped(brief)
  next
}

/^Usage: / {
  usage = substr($0, 8)
  sub("^" title " *", "", usage)
  heading("Synopsis")
  print ".B " escaped(title)
  print escaped(usage)
  heading("Description")
  print escaped(summary) (summary ~ /\.$/ ? "" : ".")
  if (more != "") print ".PP\n" escaped(more)
  next
}

# Lines between the first and the usage.
usage == "" {
  more = more (more == "" || $0 == "" ? "" : "\n") $0
  next
}

# What every page says at its end, in words of its own.
/^(Exit codes|Environment): / { next }

/^[A-Z][A-Za-z ]*:$/ {
  endVerbatim()
  section = substr($0, 1, length($0) - 1)
  heading(section == "Positionals" ? "Arguments" : section == "Subcommands" ? "Commands" : \
          section == "Java" ? "Java options" : section)
  next
}

/^$/ {
  if (verbatim) print ""
  next
}

section == "Examples" {
  if (!verbatim) print ".nf"
  verbatim = 1
  print escaped($0)
  next
}

# The rest of an option whose left column is too wide for its description.
/^                    / {
  sub(/^ +/, "")
  print escaped($0)
  next
}

/^  [^ ]/ && section != "" { entry($0); next }

{
  if (section != "Notes") heading("Notes")
  section = "Notes"
  print escaped($0)
}

END {
  endVerbatim()
  while ((getline line < common) > 0) print line
  heading("See also")
  if (name != "chartbridge") print "\\fBchartbridge\\fR(1)"
  else print "The host guide and the formats, in the documentation of chartbridge."
}
