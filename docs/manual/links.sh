#!/bin/sh
# Doxygen's filter for a header: see links.awk, which reads it twice.
exec awk -f "$(dirname "$0")/links.awk" "$1" "$1"
