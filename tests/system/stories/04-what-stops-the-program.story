# An error that the program can't continue after ends it with a message and exit status 1. The files are as last saved.
$ mkdir -p Quorin
$ printf 'NAME|INFFILE\nMeter|meter.txt\n' > Quorin/drivers.txt
$ printf 'DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n' > Quorin/qrnctrl.txt
# A colour that is not a number.
$ printf 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlace|1|||green|||\n' > Quorin/meter.txt
$ quorin-console
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"failure","text":"DISPLAY \"green\" is not a number (row 1 of meter.txt)"}
{"done":"choose","error":"the program has ended"}
stderr: quorin-console: DISPLAY "green" is not a number (row 1 of meter.txt)
[exit status 1]
# A row of the register that is too short to contain a file.
$ printf 'DRIVER|FILE|DATE|ALIAS\nMeter\n' > Quorin/qrnctrl.txt
$ quorin-console
> choose Start...
{"done":"choose"}
> choose Ok
{"event":"failure","text":"Row 1 of qrnctrl.txt is too short to have a field FILE"}
{"done":"choose","error":"the program has ended"}
stderr: quorin-console: Row 1 of qrnctrl.txt is too short to have a field FILE
[exit status 1]
# A download whose name has no number.
$ printf 'DRIVER|FILE|DATE|ALIAS\nMeter|qrnabcd.txt|20070301|\n' > Quorin/qrnctrl.txt
$ quorin-console
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose New
{"event":"failure","text":"The download file \"qrnabcd.txt\" has no number in its name"}
{"done":"choose","error":"the program has ended"}
stderr: quorin-console: The download file "qrnabcd.txt" has no number in its name
[exit status 1]
# A port that is not a number.
$ printf '[Settings]\nComPort=printer\n' > settings.ini
$ printf 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlace|1||dv: Site||||\n' > Quorin/meter.txt
$ quorin-console
{"event":"warning","about":"port","text":"The setting ComPort holds \"printer\", which is not the number of a port: choose a port under Preferences, Bluetooth Serial Setup... Opening a download that receives readings will end the program."}
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 500
{"event":"failure","text":"The setting ComPort holds \"printer\", which is not the number of a port: choose a port under Preferences, Bluetooth Serial Setup..."}
{"done":"tick","error":"the program has ended"}
stderr: quorin-console: The setting ComPort holds "printer", which is not the number of a port: choose a port under Preferences, Bluetooth Serial Setup...
[exit status 1]
$ cat Quorin/qrnctrl.txt
DRIVER|FILE|DATE|ALIAS
Meter|qrnabcd.txt|20070301|
