#!/usr/bin/env bash
# Makes the Debian package out/vardenix_VERSION_ARCHITECTURE.deb and lets Debian's own tools look at it.
# packaging/linux/check.sh installs it into a clean root and tries it.
set -euo pipefail
cd "$(dirname "$0")"
. tools/packages.sh

echo "Vardenix: building the Debian package."
need_packages "${build_packages[@]}" "${package_packages[@]}"
umask 022
configure_and_build package all
(cd build/package && cpack >cpack.log) || { cat build/package/cpack.log >&2; exit 1; }
package=$(sed -n 's/.*package: \(.*\.deb\) generated.*/\1/p' build/package/cpack.log)

desktop-file-validate packaging/linux/example.vardenix.Vardenix.desktop
appstreamcli validate --no-net build/package/package/example.vardenix.Vardenix.metainfo.xml
lintian --fail-on error,warning "$package"
echo "The package is $package"
