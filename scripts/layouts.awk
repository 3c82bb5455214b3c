# Reads what clang++ -fdump-record-layouts prints and writes a line per class of the project and per direct base and
# member: class|place|text.
/^\*\*\* Dumping AST Record Layout/ { class = ""; next }
/^ *0 \| (class|struct|union) Kiv_v4::/ {
    class = $0
    sub(/^ *0 \| [a-z]* /, "", class)
    sub(/ \(empty\)$/, "", class)
    gsub(/Kiv_v4::/, "", class)
    place = 0
    if (seen[class]++) class = ""
    else print class "|" ++place "|" class
    next
}
class == "" { next }
/\| \[sizeof=/ {
    match($0, /sizeof=[0-9]+/)
    size = substr($0, RSTART + 7, RLENGTH - 7)
    match($0, /[^a-z]align=[0-9]+/)
    print class "|" ++place "|    size " size ", alignment " substr($0, RSTART + 7, RLENGTH - 7)
    class = ""
    next
}
# Two blanks more than the class: its own, not what is inside them.
/^[ 0-9:-]+\|   [^ ]/ {
    text = $0
    sub(/^ */, "", text)
    sub(/ \|  */, " ", text)
    gsub(/Kiv_v4::/, "", text)
    gsub(/ at [^)]*\)/, ")", text)
    print class "|" ++place "|    " text
}
