#!/bin/bash
# Debian's own reader of packages has nothing to complain of.
# usage: lintian.sh FOLDER
set -euo pipefail

# What it says of root's environment is about building for others.
LC_ALL=C.UTF-8 lintian --allow-root --fail-on error,warning "$1"/tessel_*.deb
