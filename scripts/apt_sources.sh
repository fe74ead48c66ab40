# Sourced by the scripts that make a fresh Debian.
# shellcheck shell=bash

# apt_sources SUITE: from where this machine's apt takes Debian, with its updates, as lines of a
# sources.list for that suite.
apt_sources() {
    local here
    here=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
    # The words are apt's.
    # shellcheck disable=SC2016
    apt-get indextargets --format '$(ORIGIN) $(CODENAME) $(REPO_URI) $(COMPONENT)' \
        'Created-By: Packages' |
        awk -v suite="$1" -v here="$here" '
            $1 == "Debian" && sub("^" here, suite, $2) {
                print "deb [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg]", $3, $2, $4
            }' |
        sort -u
}
