#!/usr/bin/env bash
# In a real window, watched by strace: opening, editing and saving a file starts no other process,
# talks to nobody but local sockets, and writes only to the user's own folders of the program, to
# the folder of the file and to the temporary folder.
#
# usage: confinementTest.sh SOURCE PROGRAM
set -euo pipefail

needs=strace
# shellcheck source=tests/system/onDisplay.sh
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/onDisplay.sh"
strace -qq -o /dev/null true 2>/dev/null || {
    echo "strace may not watch processes here."
    exit 77
}

calls=execve,execveat,fork,vfork,clone,clone3,socket,connect,bind
calls+=,open,openat,openat2,creat,truncate,mkdir,mkdirat,mknod,mknodat
calls+=,rename,renameat,renameat2,link,linkat,symlink,symlinkat,unlink,unlinkat,rmdir
calls+=,chmod,fchmodat,chown,lchown,fchownat,setxattr,lsetxattr,utimensat

mkdir documents temporary
export TMPDIR=$PWD/temporary
# A program that is watched, with paths as they are from the root.
cat >watched <<TEXT
#!/bin/sh
# Without a bus: the message library would start one.
unset DBUS_SESSION_BUS_ADDRESS
# (The tracer stands aside: the windows are those of the process that was started.)
exec strace -D -f -q -y -s 4096 -o "$PWD/trace" -e trace=$calls "$program" "\$@"
TEXT
chmod +x watched
program=$PWD/watched

plist >documents/file.plist <<<$'<key>a</key>\n<string>b</string>'
# A second name has it overwritten, with a safety copy.
plist >documents/linked.plist <<<$'<key>a</key>\n<string>b</string>'
ln documents/linked.plist documents/link.plist
for each in file linked; do
    (cd documents && exec cat "$each.plist") >before
    cd documents
    start "$each.plist"
    xdotool key Tab Right space
    save
    quit
    cd ..
    waitFor "the trace is complete" grep -qE "^$process +\+\+\+ exited" trace
    if cmp -s before "documents/$each.plist"; then
        echo "$each.plist was not saved."
        exit 1
    fi
    mv documents/log "log.$each"
    mv trace "trace.$each"
done

# What succeeded, without the numbers of the processes.
sed -E '/= -1 E/d; s/^[0-9]+ +//; /^(\+\+\+|---)/d' trace.file trace.linked >calls
status=0
complain() {
    echo "$1"
    status=1
}

[[ $(grep -c '^execve' calls) -eq 2 ]] || complain "Not one program only: $(grep '^execve' calls)"
! grep -E '^(v?fork|clone)' calls | grep -v CLONE_THREAD || complain "These are other processes."
! grep -E '^(socket|connect|bind)' calls | grep -vE 'AF_UNIX' || complain "These are no local sockets."

# The files that were opened to be written, by the names that the system has for them, and what else
# changes folders, whose names are all from the root.
{
    grep -E '^(open|creat)' calls | grep -E 'O_WRONLY|O_RDWR|O_CREAT|^creat' |
        sed -nE 's/.* = [0-9]+<(.*)>$/\1/p'
    grep -vE '^(execve|v?fork|clone|socket|connect|bind|open|creat)' calls |
        sed -E 's/^[a-z0-9]+\(//; s/"(\/[^"]*)"/\n\1\n/g' | grep -E '^/'
} | sort -u >written
grep -q '^/' written || complain "Nothing was seen."
grep -qF "$PWD/documents/file.plist" written || complain "Saving the file was not seen."
# (By the number of a file that it has open, the program gives that file its rights.)
own="$XDG_CONFIG_HOME|$XDG_DATA_HOME|$XDG_STATE_HOME|$XDG_CACHE_HOME|$XDG_RUNTIME_DIR"
! grep -vE "^($PWD/documents|$TMPDIR|$own)(/|$)|^/dev/null$|^/proc/self/fd/[0-9]+$" written ||
    complain "These lie elsewhere."
exit "$status"
