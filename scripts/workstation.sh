# Sourced by the scripts, after common.sh and wine.sh: the demonstration
# workstation, that is, a Wine prefix with the reference host, its data and the
# program installed below C:\Tarsus.

demo="$root/reference-host/demo"

# Lays out the host's files in $1, the folder that becomes C:\Tarsus, with the executables of the
# folder $2.
lay_out_host() {
  local target=$1 bin=$2
  rm -rf "$target"
  mkdir -p "$target/Program" "$target/System"
  "$root/build/native/bin/demo-data" "$target" "${demo_megabytes:-12}" >/dev/null
  cp -r "$demo/System/." "$target/System/"
  install_ansi "$demo"/System/*.ini "$target/System/"
  "$demo/databases/build.sh" "$target"
  cp "$bin"/{QX32,QX32lib,QXNetDB,TarsusComponents,TarsusDataAccess}.dll "$target/Program/"
  cp "$bin/cabarc.exe" "$target/Program/"
  cp "$bin"/{Tarsus,BackupEventLog,ExportRegistry,ExportTable}.exe "$target/System/"
  cp -r "$demo/Temp" "$target/"
}

# The same with what the program's own package holds, from the Windows build in build/windows.
lay_out_workstation() {
  local bin="$root/build/windows/bin"
  lay_out_host "$1" "$bin"
  cp "$bin"/{QXBackupUtility,QXHostCheck}.exe "$1/Program/"
  "$root/docs/manual/build.sh" "$1/Program/QXBackupUtility.html"
}

# Copies text files into a folder in the code page and with the line ends that
# the host reads.
install_ansi() {
  local folder=${*: -1} file
  for file in "${@:1:$#-1}"; do
    sed 's/\r*$/\r/' "$file" | iconv -f UTF-8 -t CP1252 >"$folder/$(basename "$file")"
  done
}

# Makes the prefix $1 a workstation: files, registry, components, and removable
# drives A:, E: and F:. The medium in E:, the folder $1.medium, is labelled as ours; the one in
# F:, the folder $1.foreign, is not.
install_workstation() {
  local prefix=$1
  use_new_prefix "$prefix"
  lay_out_workstation "$prefix/drive_c/Tarsus"
  insert_medium e "$prefix.medium"
  insert_medium f "$prefix.foreign"
  insert_medium a "$prefix.floppy"
  echo BACKUP >"$prefix.medium/.windows-label"
  restart_wine # the server looks at a drive's kind and label when it starts
  wine regedit /S "$(winepath -w "$demo/registry.reg")"
  register_components
}

insert_medium() {
  rm -rf "$2"
  mkdir -p "$2"
  ln -sfn "$2" "$WINEPREFIX/dosdevices/$1:"
  wine reg add 'HKLM\Software\Wine\Drives' /v "$1:" /d floppy /f >/dev/null
}

# Wine puts its own data-access classes back whenever it updates a prefix, so
# this runs at every start.
register_components() {
  wine regsvr32 /s 'C:\Tarsus\Program\TarsusComponents.dll' || die "the host's components could not be registered"
  wine regsvr32 /s 'C:\Tarsus\Program\TarsusDataAccess.dll' || die "the data access classes could not be registered"
}
