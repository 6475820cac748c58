# A date that a person or another tool has written may have another form than Quorin's. One that is only looked at stays
# as it was; a year of two digits is one from 1930 to 2029.
$ mkdir Quorin && printf 'NAME|INFFILE\nSoil Meter|soil.txt\n' > Quorin/drivers.txt
$ printf 'DRIVER|FILE|DATE|ALIAS\nSoil Meter|qrn0001.txt|20070301|\n' > Quorin/qrnctrl.txt
$ printf 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlot|1||||||\nDug|1|||||date|\nSown|1|||||DATE|\nCut|1|||||DATE|\n' > Quorin/soil.txt
$ printf 'Plot|Dug|Sown|Cut\nA1|05/03/07|7/4/1999| 1 / 12 / 31 \n' > Quorin/qrn0001.txt
$ quorin-console --strict
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 200
{"done":"tick"}
> tap 1 1
{"done":"tap"}
> show
      Dug
    --------------------------------------------------------------------------------
      [ 2007-03-05 ]
    --------------------------------------------------------------------------------
    [Back]                                                                      [Ok]
{"done":"show"}
> choose Ok
{"done":"choose"}
> tick 200
{"done":"tick"}
> tap 2 1
{"done":"tap"}
> choose Ok
{"done":"choose"}
> tick 200
{"done":"tick"}
> tap 3 1
{"done":"tap"}
> show
      Cut
    --------------------------------------------------------------------------------
      [ 1931-12-01 ]
    --------------------------------------------------------------------------------
    [Back]                                                                      [Ok]
{"done":"show"}
> choose Ok
{"done":"choose"}
> tick 200
{"done":"tick"}
> show
      Download                               1/1
    --------------------------------------------------------------------------------
      Plot                                   A1
      Dug                                    05/03/07
      Sown                                   7/4/1999
    > Cut                                     1 / 12 / 31
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> choose Next Record
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 200
{"done":"tick"}
# The next day is another date, and is written in full.
> tap 1 1
{"done":"tap"}
> key 39
{"done":"key"}
> choose Ok
{"done":"choose"}
> tick 200
{"done":"tick"}
> choose Close
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
$ cat Quorin/qrn0001.txt
Plot|Dug|Sown|Cut
A1|06/03/2007|7/4/1999| 1 / 12 / 31 
# A number with a sign is not part of a date.
$ printf 'Plot|Dug|Sown|Cut\nA1|+5/03/2007||\n' > Quorin/qrn0001.txt
$ quorin-console
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 200
{"done":"tick"}
> tap 1 1
{"event":"failure","text":"\"+5/03/2007\" is not a date of the form day/month/year: correct it in the file of the table with any editor"}
{"done":"tap","error":"the program has ended"}
stderr: quorin-console: "+5/03/2007" is not a date of the form day/month/year: correct it in the file of the table with any editor
[exit status 1]
