# What ends the program with a message does not take what was typed since the last save with it.
$ mkdir Quorin && printf 'NAME|INFFILE\nSoil Meter|soil.txt\n' > Quorin/drivers.txt
$ printf 'DRIVER|FILE|DATE|ALIAS\nSoil Meter|qrn0001.txt|20070301|\n' > Quorin/qrnctrl.txt
$ printf 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlot|1||Depth||||\nDug|1|||||DATE|\nRemark|1||||||\n' > Quorin/soil.txt
$ printf 'Plot|Dug|Remark\nA1|2007-04-01|dry\nA2|02/04/2007|wet\n' > Quorin/qrn0001.txt
$ quorin-console
> choose Start...
> choose Ok
> choose Open
> tap 0 1
> set B7
> key 13
> tap 2 1
> set stony
> tap 1 1
$ cat Quorin/qrn0001.txt
# A port that is no number, with a calendar over the record.
$ printf '[Settings]\nComPort=Com1:\n' > settings.ini
$ quorin-console
> choose Start...
> choose Ok
> choose Open
> choose Next Record
> tap 2 1
> set sandy
> key 13
> tap 1 1
> tick 500
$ cat Quorin/qrn0001.txt
# A disk that has no room: both are told, and the file is as it was.
$ printf '' > settings.ini
$ quorin-console
> choose Start...
> choose Ok
> choose Open
> tap 2 1
> set lost
> key 13
> disk fail -1
> tap 1 1
$ cat Quorin/qrn0001.txt
# Off the record screens there is no record to be saved, whatever the grid shows: here the register has no room for a
# new row.
$ quorin-console
> choose Start...
> choose Ok
> disk fail -1
> choose New
> disk ok
> choose Rename
>> set North field
>> disk fail -1
>> choose Ok
$ cat Quorin/qrnctrl.txt Quorin/qrn0001.txt
