#!/bin/sh
# Runs a command with a shared memory folder of its own. JACK keeps there, for all servers of a user together,
# the list of servers (of which there can be eight) and the names of ports; a test must not meet anybody else's.
# Where the system forbids such folders, the command shares the common one.
own='mount -t tmpfs tmpfs /dev/shm'
if unshare --map-root-user --mount sh -c "$own" 2>/dev/null; then
    exec unshare --map-root-user --mount sh -c "$own"' && exec "$@"' sh "$@"
fi
echo "with_own_shared_memory.sh: no mount namespace is to be had, sharing /dev/shm" >&2
exec "$@"
