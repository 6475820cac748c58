# When an error ends the program with a message, what was typed since the last save is saved first.
$ mkdir Quorin && printf 'NAME|INFFILE\nSoil Meter|soil.txt\n' > Quorin/drivers.txt
$ printf 'DRIVER|FILE|DATE|ALIAS\nSoil Meter|qrn0001.txt|20070301|\n' > Quorin/qrnctrl.txt
$ printf 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlot|1||Depth||||\nDug|1|||||DATE|\nRemark|1||||||\n' > Quorin/soil.txt
$ printf 'Plot|Dug|Remark\nA1|2007-04-01|dry\nA2|02/04/2007|wet\n' > Quorin/qrn0001.txt
$ quorin-console
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tap 0 1
{"done":"tap"}
> set B7
{"done":"set"}
> key 13
{"done":"key"}
> tap 2 1
{"done":"tap"}
> set stony
{"done":"set"}
> tap 1 1
{"event":"failure","text":"\"2007-04-01\" is not a date of the form day/month/year: correct it in the file of the table with any editor"}
{"done":"tap","error":"the program has ended"}
stderr: quorin-console: "2007-04-01" is not a date of the form day/month/year: correct it in the file of the table with any editor
[exit status 1]
$ cat Quorin/qrn0001.txt
Plot|Dug|Remark
B7|2007-04-01|stony
A2|02/04/2007|wet
# A port that is not a number, with a calendar over the record.
$ printf '[Settings]\nComPort=Com1:\n' > settings.ini
$ quorin-console
{"event":"warning","about":"port","text":"The setting ComPort holds \"Com1:\", which is not the number of a port: choose a port under Preferences, Bluetooth Serial Setup... Opening a download that receives readings will end the program."}
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> choose Next Record
{"done":"choose"}
> tap 2 1
{"done":"tap"}
> set sandy
{"done":"set"}
> key 13
{"done":"key"}
> tap 1 1
{"done":"tap"}
> tick 500
{"event":"failure","text":"The setting ComPort holds \"Com1:\", which is not the number of a port: choose a port under Preferences, Bluetooth Serial Setup..."}
{"done":"tick","error":"the program has ended"}
stderr: quorin-console: The setting ComPort holds "Com1:", which is not the number of a port: choose a port under Preferences, Bluetooth Serial Setup...
[exit status 1]
$ cat Quorin/qrn0001.txt
Plot|Dug|Remark
B7|2007-04-01|stony
A2|02/04/2007|sandy
# The disk is full: both errors are reported, and the file is as it was.
$ printf '' > settings.ini
$ quorin-console
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tap 2 1
{"done":"tap"}
> set lost
{"done":"set"}
> key 13
{"done":"key"}
> disk fail -1
{"done":"disk"}
> tap 1 1
{"event":"notsaved","file":"qrn0001.txt","error":"the disk is full"}
{"event":"failure","text":"\"2007-04-01\" is not a date of the form day/month/year: correct it in the file of the table with any editor"}
{"done":"tap","error":"the program has ended"}
stderr: quorin-console: not saved: qrn0001.txt, the disk is full
stderr: quorin-console: "2007-04-01" is not a date of the form day/month/year: correct it in the file of the table with any editor
[exit status 1]
$ cat Quorin/qrn0001.txt
Plot|Dug|Remark
B7|2007-04-01|stony
A2|02/04/2007|sandy
# On other screens than the record's nothing is saved, whatever the grid shows: here the disk has no room for a new row of
# the register.
$ quorin-console
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> disk fail -1
{"done":"disk"}
> choose New
{"event":"notsaved","file":"qrnctrl.txt","error":"the disk is full"}
{"done":"choose"}
> disk ok
{"done":"disk"}
> choose Rename
>> set North field
{"done":"set"}
>> disk fail -1
{"done":"disk"}
>> choose Ok
{"done":"choose"}
{"event":"notsaved","file":"qrnctrl.txt","error":"the disk is full"}
{"done":"choose"}
stderr: quorin-console: not saved: qrnctrl.txt, the disk is full
stderr: quorin-console: not saved: qrnctrl.txt, the disk is full
$ cat Quorin/qrnctrl.txt Quorin/qrn0001.txt
DRIVER|FILE|DATE|ALIAS
Soil Meter|qrn0001.txt|20070301|
Plot|Dug|Remark
B7|2007-04-01|stony
A2|02/04/2007|sandy
