# Reads the tables that clang++ -fdump-vtable-layouts prints and writes a line per class, base and
# operation: class|place|text.
function line(text) { print class "|" ++place "|" text }
function plain(text) {
    sub(/^ *[0-9]+ \| /, "", text)
    sub(/ \[T = [^]]*\]/, "", text)
    gsub(/Kiv_v4::/, "", text)
    return text
}
/^Vtable for / { inTable = /^Vtable for 'Kiv_v4::/; class = ""; next }
!inTable { next }
/^$/ { inTable = 0; next }
# Every class has its own destructor. In front, so that it names instances of templates in full.
/::~.* \[complete\]$/ {
    text = plain($0)
    sub(/ \[complete\]$/, "", text)
    if (class == "") {
        class = text
        sub(/::~.*/, "", class)
        place = 0
        line(class)
    }
    line("    " text)
    next
}
/ \[deleting\]$| RTTI$|offset_to_top|^ *\[/ { next }
/ vtable address --$/ {
    # The first table serves the class itself; further ones serve further bases.
    if (class != "") {
        sub(/^ *-- \(/, "")
        sub(/, [0-9]+\) vtable address --$/, "")
        line("  as " plain($0))
    }
    next
}
{ line("    " plain($0)) }
