#!/bin/bash
# nix's parser understands the derivation. Without nixpkgs, which are not at hand, that is all that can be asked.
# usage: nix.sh SOURCES
set -euo pipefail

# shellcheck source-path=SCRIPTDIR source=release.sh
. "$(dirname "$(realpath "${BASH_SOURCE[0]}")")/release.sh"
skip_without nix-instantiate
nix-instantiate --parse "$1/packaging/package.nix" >/dev/null
