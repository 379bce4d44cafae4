# Makes the comments of a header documentation, for doxygen: those in front of a
# declaration, those behind one, and, when a blank line follows, that of the file.
# What would be markup in them becomes text; lines set in further are code.

function escaped(text) {
  gsub(/[\\<>@#&%]/, "\\\\&", text)
  return text
}

function print_block(    i, text, code) {
  for (i = 1; i <= count; i++) {
    text = block[i]
    sub(/^ *\/\/ ?/, "", text)
    code = text ~ /^  / && (code || i == 1 || previous == "")
    print "/// " (code ? "    " text : escaped(text))
    previous = text
  }
}

/^ *\/\/( |$)/ {
  block[++count] = $0
  next
}

count != 0 {
  if (/[^ ]/) {
    print_block()
  } else if (block[1] ~ /^\/\//) {
    print "/// \\file"
    print_block()
  }
  count = 0
}

{
  at = index($0, " // ")
  if (at == 0) {
    print
  } else {
    print substr($0, 1, at) "///< " escaped(substr($0, at + 4))
  }
}
