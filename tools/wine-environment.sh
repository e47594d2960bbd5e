# shellcheck shell=bash
# Sets up the environment for Windows programs; sourced by the scripts that start them. A Wine prefix is
# a folder with a registry and a drive C.

export LANG=C.UTF-8 # other locales may damage file names
unset LC_ALL
export WINEARCH=${WINEARCH:-win64}
tools_folder=$(realpath "$(dirname "${BASH_SOURCE[0]}")")
[[ $PATH == "$tools_folder/wine-loader:"* ]] || export PATH=$tools_folder/wine-loader:$PATH
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe='

# Ends every program whose environment names this prefix, and the prefix's server.
stop_prefix() {
  [[ ! -d $1 ]] || WINEPREFIX=$1 wineserver -k 2>/dev/null || true
  end_processes_with "WINEPREFIX=$1" 10
}

# Ends the processes with this entry in their environment. They have `grace` tenths of a second to end by
# themselves, then get SIGTERM, and finally SIGKILL.
end_processes_with() {
  local entry=$1 grace=$2 round processes
  for ((round = 0; round < grace + 50; ++round)); do
    # The search itself must not have the entry in its environment.
    mapfile -t processes < <(env -i "$(command -v grep)" -lszxF "$entry" /proc/[0-9]*/environ)
    ((${#processes[@]})) || return 0
    processes=("${processes[@]//[!0-9]/}")
    if ((round == grace)); then
      kill -TERM "${processes[@]}" 2>/dev/null || true
    elif ((round >= grace + 30)); then
      kill -KILL "${processes[@]}" 2>/dev/null || true
    fi
    sleep 0.1
  done
  echo "could not end the processes ${processes[*]}" >&2
}
