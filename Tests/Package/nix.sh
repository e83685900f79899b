#!/bin/bash
# nix's parser accepts the derivation. Nothing more can be checked without nixpkgs, which is not available here.
# usage: nix.sh SOURCES
set -euo pipefail

# shellcheck source-path=SCRIPTDIR source=release.sh
. "$(dirname "$(realpath "${BASH_SOURCE[0]}")")/release.sh"
skip_without nix-instantiate
nix-instantiate --parse "$1/packaging/package.nix" >/dev/null
