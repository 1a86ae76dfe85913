#!/usr/bin/env bash
# Installs what is missing, builds and starts Nutrovex. Arguments are passed to the program.
set -euo pipefail
cd "$(dirname "$0")"
source tools/setup.sh
nv_install "${nv_packages[@]}"
nv_build default
exec build/default/src/app/nutrovex "$@"
