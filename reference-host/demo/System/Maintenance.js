// The host's part in a maintenance log. The backup utility runs it three times:
//
//   cscript Maintenance.js PHASE "STAGING\" "USER\" COLLECT DAYS
//
// Phase 1 comes before anything is gathered, 2 before what was gathered is packed, 3 after that.
// COLLECT is 1 when only the images of the last DAYS days are wanted. Exit code 0, 1 on a
// failure, 2 for a wrong call.

var fileSystem = new ActiveXObject("Scripting.FileSystemObject");
var shell = new ActiveXObject("WScript.Shell");
var FOR_READING = 1, FOR_APPENDING = 8;

function withBackslash(folder) {
  return folder.charAt(folder.length - 1) == "\\" ? folder : folder + "\\";
}

// Some script hosts take the \" at the end of a folder for a quote inside it; both folders are
// then one argument.
function readArguments(given) {
  var words = [], i;
  for (i = 0; i < given.length; i++) words.push(String(given.Item(i)));
  if (words.length == 4) {
    var folders = words[1].split("\"");
    words.splice(1, 1, folders[0], folders[1].replace(/^ +/, ""));
  }
  if (words.length != 5) return null;
  return {
    phase: words[0],
    staging: withBackslash(words[1]),
    user: withBackslash(words[2]),
    collect: words[3] == "1",
    days: words[4]
  };
}

// An entry of the path table, which stands beside this script.
function pathEntry(name) {
  var table = fileSystem.OpenTextFile(scriptFolder() + "Directory.ini", FOR_READING);
  var value = null;
  while (value === null && !table.AtEndOfStream) {
    var line = table.ReadLine();
    if (line.indexOf(name + "=") == 0) value = line.substring(name.length + 1);
  }
  table.Close();
  return value;
}

function scriptFolder() {
  var path = WScript.ScriptFullName;
  return path.substring(0, path.lastIndexOf("\\") + 1);
}

function append(path, line) {
  var file = fileSystem.OpenTextFile(path, FOR_APPENDING, true);
  file.WriteLine(line);
  file.Close();
}

function timeStamp() {
  var now = new Date();
  var parts = [now.getMonth() + 1, now.getDate(), now.getHours(), now.getMinutes(), now.getSeconds()], i;
  for (i = 0; i < parts.length; i++) parts[i] = (parts[i] < 10 ? "0" : "") + parts[i];
  return now.getFullYear() + "/" + parts[0] + "/" + parts[1] + " " + parts[2] + ":" + parts[3] + ":" + parts[4];
}

// Some script hosts leave the text's closing NUL in it.
function environment(name) {
  return shell.ExpandEnvironmentStrings("%" + name + "%").replace(/\0+$/, "");
}

// The filter of personal information reads how many days back images are wanted from this file
// and would heed the one of an earlier collection.
function forgetImageRange() {
  var range = withBackslash(pathEntry("Image")) + "range.txt";
  if (fileSystem.FileExists(range)) fileSystem.DeleteFile(range, true);
}

function describeWorkstation(job) {
  var info = job.staging + "Workstation.txt";
  append(info, "Collected: " + timeStamp());
  append(info, "Computer: " + environment("COMPUTERNAME"));
  append(info, "Processors: " + environment("NUMBER_OF_PROCESSORS"));
  append(info, "User folder: " + job.user);
  append(info, "Images: " + (job.collect ? "of the last " + job.days + " days" : "all"));
}

function listWhatWasGathered(job) {
  var HIDDEN = 0, list = job.staging + "Contents.txt";
  shell.Run("cmd /c dir /s /b \"" + job.staging + "*\" > \"" + list + "\"", HIDDEN, true);
}

function noteTheEnd(job) {
  append(withBackslash(pathEntry("Log")) + "Maintenance.log", timeStamp() + " maintenance log packed");
}

function run(job) {
  if (job === null) return 2;
  if (job.phase == "1" && !job.collect) forgetImageRange();
  if (job.phase == "1") describeWorkstation(job);
  if (job.phase == "2") listWhatWasGathered(job);
  if (job.phase == "3") noteTheEnd(job);
  return 0;
}

// An error that nobody catches ends in exit code 0 with some script hosts.
var exitCode = 1;
try {
  exitCode = run(readArguments(WScript.Arguments));
} catch (error) {
}
WScript.Quit(exitCode);
