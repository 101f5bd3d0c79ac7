# Turns CHANGELOG.md into the changelog of a Debian package: an entry for each released version, with
# the bullets of all its parts in lines of at most 80 letters. `maintainer` is "Name <address>".
function write_bullet(   count, words, i, line) {
    count = split(bullet, words, " ")
    line = "  *"
    for (i = 1; i <= count; ++i) {
        if (length(line) + 1 + length(words[i]) > 80) {
            print line
            line = "   "
        }
        line = line " " words[i]
    }
    if (count)
        print line
    bullet = ""
}
function close_entry() {
    write_bullet()
    if (open)
        print "\n -- " maintainer "  " day " 12:00:00 +0000"
    open = 0
}
/^## / {
    close_entry()
    if (match($0, /^## \[[0-9.]+\] - [0-9-]+$/) == 0)
        next
    version = $2
    gsub(/[][]/, "", version)
    ("LC_ALL=C date -u -d " $4 " '+%a, %d %b %Y'") | getline day
    print (entries++ ? "\n" : "") "morlik (" version ") stable; urgency=medium\n"
    open = 1
    next
}
!open { next }
/^- / { write_bullet(); bullet = substr($0, 3) }
/^  [^ ]/ { bullet = bullet $0 }
/^$/ { write_bullet() }
END { close_entry() }
