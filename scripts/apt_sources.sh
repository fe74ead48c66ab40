# Sourced by the scripts that make a fresh Debian.
# shellcheck shell=bash

# apt_sources SUITE: lines of a sources.list that take that suite from where this machine's apt takes
# its own.
apt_sources() {
    local here
    here=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
    # The words are apt's.
    # shellcheck disable=SC2016
    apt-get indextargets --format '$(ORIGIN) $(CODENAME) $(REPO_URI) $(COMPONENT)' \
        'Created-By: Packages' |
        awk -v suite="$1" -v here="$here" '
            $1 == "Debian" && $2 == here {
                print "deb [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg]", $3, suite, $4
            }' |
        sort -u
}
