# Sourced by the scripts, after common.sh and wine.sh: the demonstration
# workstation, that is, a Wine prefix with the reference host, its data and the
# program installed below C:\Tarsus.

demo="$root/reference-host/demo"

# Lays out the workstation's files in $1, the folder that becomes C:\Tarsus,
# from the Windows build in build/windows/bin.
lay_out_workstation() {
  local target=$1 bin="$root/build/windows/bin"
  rm -rf "$target"
  mkdir -p "$target/Program" "$target/System"
  "$root/build/native/bin/demo-data" "$target" >/dev/null
  cp -r "$demo/System/." "$target/System/"
  install_ansi "$demo"/System/*.ini "$target/System/"
  "$demo/databases/build.sh" "$target"
  cp "$bin"/{QXBackupUtility,cabarc}.exe "$bin"/{QX32,QX32lib,QXNetDB,TarsusComponents,TarsusDataAccess}.dll "$target/Program/"
  cp "$bin"/{Tarsus,BackupEventLog,ExportRegistry,ExportTable}.exe "$target/System/"
  cp -r "$demo/Temp" "$target/"
}

# Copies text files into a folder in the code page and with the line ends that
# the host reads.
install_ansi() {
  local folder=${*: -1} file
  for file in "${@:1:$#-1}"; do
    sed 's/\r*$/\r/' "$file" | iconv -f UTF-8 -t CP1252 >"$folder/$(basename "$file")"
  done
}

# Makes the prefix $1 a workstation: files, registry, components, and a removable
# drive E: whose medium is the folder $1.medium.
install_workstation() {
  local prefix=$1
  use_new_prefix "$prefix"
  lay_out_workstation "$prefix/drive_c/Tarsus"
  rm -rf "$prefix.medium"
  mkdir -p "$prefix.medium"
  ln -sfn "$prefix.medium" "$prefix/dosdevices/e:"
  wine reg add 'HKLM\Software\Wine\Drives' /v e: /d floppy /f >/dev/null
  restart_wine # a drive's kind is fixed when the server first sees it
  wine regedit /S "$(winepath -w "$demo/registry.reg")"
  register_components
}

# Wine puts its own data-access classes back whenever it updates a prefix, so
# this runs at every start.
register_components() {
  wine regsvr32 /s 'C:\Tarsus\Program\TarsusComponents.dll' || die "the host's components could not be registered"
  wine regsvr32 /s 'C:\Tarsus\Program\TarsusDataAccess.dll' || die "the data access classes could not be registered"
}
