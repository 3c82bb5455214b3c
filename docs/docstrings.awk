# How the API site reads a public header. Each line gives one line, so that line numbers stay.
#
# - A docstring holds for all declarations below it, up to the next blank line or comment.
# - A constructor without one is described by its class; `Ptr` and `!=` mean the same everywhere.
# - Special members that are defaulted, deleted or only declared are left out.

function indentation(text) { match(text, /^ */); return RLENGTH }

# Remembers one line of a docstring.
function note(text) { doc = doc (doc == "" ? "" : "\n") text }

{ line = $0 }

/^ *(class|struct) / && !/;$/ {
    name = line
    sub(/^ *(class|struct) (KIV_EXPORT )?/, "", name)
    sub(/[^A-Za-z0-9_].*/, "", name)
    brief = doc
    sub(/\n\n.*/, "", brief)
    gsub(/\n/, " ", brief)
    if (match(brief, /\. [A-Z`]/)) { brief = substr(brief, 1, RSTART) }
}

/^ *\/\/\/ ?/ {
    if (!reading) { doc = "" }
    reading = 1
    text = line
    sub(/^ *\/\/\/ ?/, "", text)
    note(text)
    doc_indentation = indentation(line)
    ended = 1
    print line
    next
}

{ first = reading; reading = 0 }

/^ *$/ || /^ *\/\// || /^ *(public|protected|private):/ { doc = ""; ended = 1; print line; next }

ended && !first && (/= (default|delete);$/ || /^ *(virtual )?~[A-Za-z0-9_]+\(\)( override)?;$/) { print ""; next }

{
    starts = ended && !first && line !~ /^ *[{}#]/ && line !~ /\/\/\/</
    ended = line ~ /[;{}]$/ || line ~ /; +\/\/\/< /
    added = ""
    if (starts && line ~ /operator!=\(/) {
        added = "The opposite of `==`."
    } else if (starts && line ~ /^ *using ((const_)?(reverse_)?iterator|value_type) = /) {
        added = "As the standard containers name it."
    } else if (starts && doc != "" && indentation(line) == doc_indentation) {
        added = doc
    } else if (starts && line ~ /^ *using Ptr = /) {
        added = "How its objects are passed and kept."
    } else if (starts && line ~ "^ *(explicit |constexpr )*" name "\\(") {
        added = brief
    }
    gsub(/\n/, " ", added)
    print (added == "" ? "" : "/** " added " */ ") line
}
